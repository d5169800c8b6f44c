// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include "MenuBar/MenuBarExtra.h"

#import <AppKit/AppKit.h>

/// The rows as a native menu. Items stay and are retitled; while the menu is open none comes or goes.
@interface StatusMenu : NSObject <NSMenuDelegate>
@property(nonatomic, readonly) NSMenu *menu;
- (void)setRows:(const MenuRows &)rows;
@end
