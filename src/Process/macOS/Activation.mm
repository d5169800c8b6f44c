// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Process/Activation.h"

#import <AppKit/AppKit.h>

void activateIgnoringOtherApps() { [NSApp activateIgnoringOtherApps:YES]; }

// The system takes the user to the window's space.
bool isElsewhere(const QWindow &) { return false; }
