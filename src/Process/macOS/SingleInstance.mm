// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Process/SingleInstance.h"

#import <AppKit/AppKit.h>

/// Hears that the user has opened the program although it runs.
@interface Reopening : NSObject
@property(nonatomic) std::function<void()> activate;
@end

@implementation Reopening

- (instancetype)init
{
    self = [super init];
    // The moment when a handler takes the place of the system's own.
    [NSNotificationCenter.defaultCenter addObserver:self
                                           selector:@selector(willFinishLaunching:)
                                               name:NSApplicationWillFinishLaunchingNotification
                                             object:nil];
    return self;
}

- (void)willFinishLaunching:(NSNotification *)notification
{
    [NSAppleEventManager.sharedAppleEventManager setEventHandler:self
                                                     andSelector:@selector(reopen:withReplyEvent:)
                                                   forEventClass:kCoreEventClass
                                                      andEventID:kAEReopenApplication];
}

- (void)reopen:(NSAppleEventDescriptor *)event withReplyEvent:(NSAppleEventDescriptor *)reply
{
    if (self.activate)
        self.activate();
}

@end

namespace {

/// The system keeps one instance of a bundle, and tells it when the user opens the bundle again.
class BundleClaim : public SingleInstance {
public:
    ~BundleClaim() override
    {
        [NSAppleEventManager.sharedAppleEventManager removeEventHandlerForEventClass:kCoreEventClass
                                                                          andEventID:kAEReopenApplication];
    }

    void onActivation(std::function<void()> activate) override { m_reopening.activate = std::move(activate); }

private:
    Reopening *const m_reopening = [[Reopening alloc] init];
};

} // namespace

std::unique_ptr<SingleInstance> SingleInstance::claim() { return std::make_unique<BundleClaim>(); }
