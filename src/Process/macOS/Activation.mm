// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Process/Activation.h"

#import <AppKit/AppKit.h>

void activateIgnoringOtherApps() { [NSApp activateIgnoringOtherApps:YES]; }
