// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Platform/Activation.h"

#import <AppKit/AppKit.h>

void activateIgnoringOtherApps() { [NSApp activateIgnoringOtherApps:YES]; }
