// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Process/macOS/Bundle.h"

#import <AppKit/AppKit.h>

/// Takes the place of the system's own handler.
@interface Reopening : NSObject
@property(nonatomic) std::function<void()> reopened;
@end

@implementation Reopening

- (void)willFinishLaunching:(NSNotification *)notification
{
    [NSAppleEventManager.sharedAppleEventManager setEventHandler:self
                                                     andSelector:@selector(reopen:withReplyEvent:)
                                                   forEventClass:kCoreEventClass
                                                      andEventID:kAEReopenApplication];
}

- (void)reopen:(NSAppleEventDescriptor *)event withReplyEvent:(NSAppleEventDescriptor *)reply
{
    self.reopened();
}

@end

std::shared_ptr<void> Bundle::onReopening(std::function<void()> reopened)
{
    Reopening *const reopening = [[Reopening alloc] init];
    reopening.reopened = std::move(reopened);
    // The moment when a handler can take that place.
    [NSNotificationCenter.defaultCenter addObserver:reopening
                                           selector:@selector(willFinishLaunching:)
                                               name:NSApplicationWillFinishLaunchingNotification
                                             object:nil];
    return {nullptr, [reopening](void *) {
                [NSNotificationCenter.defaultCenter removeObserver:reopening];
                [NSAppleEventManager.sharedAppleEventManager removeEventHandlerForEventClass:kCoreEventClass
                                                                                  andEventID:kAEReopenApplication];
            }};
}

void Bundle::open(qint64 process)
{
    NSRunningApplication *const program =
        [NSRunningApplication runningApplicationWithProcessIdentifier:static_cast<pid_t>(process)];
    if (program.bundleURL)
        [NSWorkspace.sharedWorkspace openURL:program.bundleURL];
}
