// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Machine/macOS/Waking.h"

#import <AppKit/AppKit.h>

std::shared_ptr<void> onWaking(std::function<void()> woke)
{
    NSNotificationCenter *const center = NSWorkspace.sharedWorkspace.notificationCenter;
    const id observer = [center addObserverForName:NSWorkspaceDidWakeNotification
                                            object:nil
                                             queue:nil
                                        usingBlock:^(NSNotification *) {
                                          woke();
                                        }];
    return {nullptr, [=](void *) { [center removeObserver:observer]; }};
}
