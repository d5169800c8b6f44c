// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Process/SingleInstance.h"

#include "Process/macOS/InstanceLock.h"

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

/// The system keeps one instance of a bundle at its place, and tells it when the user opens that one again. The lock
/// keeps a copy elsewhere from being a second one.
class BundleClaim : public SingleInstance {
public:
    ~BundleClaim() override
    {
        [NSAppleEventManager.sharedAppleEventManager removeEventHandlerForEventClass:kCoreEventClass
                                                                          andEventID:kAEReopenApplication];
    }

    void onActivation(std::function<void()> activate) override { m_reopening.activate = std::move(activate); }

    InstanceLock lock{InstanceLock::usualPath()};

private:
    Reopening *const m_reopening = [[Reopening alloc] init];
};

/// Opens the bundle that the process runs from, as the user does.
void reopen(qint64 process)
{
    NSRunningApplication *const program =
        [NSRunningApplication runningApplicationWithProcessIdentifier:static_cast<pid_t>(process)];
    if (program.bundleURL)
        [NSWorkspace.sharedWorkspace openURL:program.bundleURL];
}

} // namespace

std::unique_ptr<SingleInstance> SingleInstance::claim()
{
    auto claim = std::make_unique<BundleClaim>();
    const auto other = claim->lock.otherHolder();
    if (!other)
        return claim;
    reopen(*other);
    return nullptr;
}
