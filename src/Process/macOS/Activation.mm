// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Process/Activation.h"

#import <AppKit/AppKit.h>

/// Undoes the hiding once it has given the focus away: windows of a hidden program, an alert's too, stay out of sight.
@interface Unhiding : NSObject
@end

@implementation Unhiding

- (void)didHide:(NSNotification *)notification
{
    [NSNotificationCenter.defaultCenter removeObserver:self];
    [NSApp unhideWithoutActivation];
}

@end

void activateIgnoringOtherApps(quintptr window)
{
    [NSApp activateIgnoringOtherApps:YES];
    // After a click on a status item the system at times overhears that.
    [((__bridge NSView *)reinterpret_cast<void *>(window)).window orderFrontRegardless];
}

void giveFocusBack()
{
    static Unhiding *const unhiding = [[Unhiding alloc] init];
    [NSNotificationCenter.defaultCenter addObserver:unhiding
                                           selector:@selector(didHide:)
                                               name:NSApplicationDidHideNotification
                                             object:nil];
    [NSApp hide:nil];
}

// The system takes the user to the window's space.
bool isElsewhere(const QWindow &) { return false; }
