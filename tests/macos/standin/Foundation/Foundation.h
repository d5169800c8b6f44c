// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

// What the program uses of Foundation, declared as its documentation has it, on ObjFW's runtime.
#pragma once

#import <ObjFWRT/ObjFWRT.h>

#include <QString>

#include <cstdint>
#include <sys/types.h>

using NSInteger = long;
using NSUInteger = unsigned long;
using NSTimeInterval = double;
using CGFloat = double;
using unichar = unsigned short;

struct NSSize {
    CGFloat width;
    CGFloat height;
};
struct NSPoint {
    CGFloat x;
    CGFloat y;
};
struct NSRect {
    NSPoint origin;
    NSSize size;
};

@class NSArray, NSString;

@protocol NSObject
@end

__attribute__((objc_root_class))
@interface NSObject<NSObject> {
    Class isa; // and no more: the compiler lays out @"text" by itself
}
+ (instancetype)alloc;
+ (Class)class;
- (instancetype)init;
- (instancetype)self;
- (void)dealloc;
- (BOOL)respondsToSelector:(SEL)selector;
- (void)performSelector:(SEL)selector withObject:(id)argument afterDelay:(NSTimeInterval)delay inModes:(NSArray *)modes;
@end

@interface NSString : NSObject
+ (instancetype)stringWithCharacters:(const unichar *)characters length:(NSUInteger)length;
@end

@interface NSArray<Element> : NSObject
+ (instancetype)arrayWithObjects:(const id *)objects count:(NSUInteger)count;
@end

@interface NSDictionary<Key, Value> : NSObject
+ (instancetype)dictionaryWithObjects:(const id *)objects forKeys:(const id *)keys count:(NSUInteger)count;
@end

@interface NSAttributedString : NSObject
- (instancetype)initWithString:(NSString *)text attributes:(NSDictionary *)attributes;
@end

@interface NSURL : NSObject
@end

@interface NSNotification : NSObject
@end

@interface NSOperationQueue : NSObject
@end

@interface NSNotificationCenter : NSObject
+ (NSNotificationCenter *)defaultCenter;
- (void)addObserver:(id)observer selector:(SEL)selector name:(NSString *)name object:(id)object;
- (id)addObserverForName:(NSString *)name
                  object:(id)object
                   queue:(NSOperationQueue *)queue
              usingBlock:(void (^)(NSNotification *))block;
- (void)removeObserver:(id)observer;
@end

enum NSActivityOptions : std::uint64_t { NSActivityUserInitiatedAllowingIdleSystemSleep = 0x00EFFFFFULL };

@interface NSProcessInfo : NSObject
+ (NSProcessInfo *)processInfo;
- (id<NSObject>)beginActivityWithOptions:(NSActivityOptions)options reason:(NSString *)reason;
- (void)endActivity:(id<NSObject>)activity;
@end

using AEEventClass = std::uint32_t;
using AEEventID = std::uint32_t;
enum : AEEventClass { kCoreEventClass = 0x61657674 };   // 'aevt'
enum : AEEventID { kAEReopenApplication = 0x72617070 }; // 'rapp'

@interface NSAppleEventDescriptor : NSObject
@end

@interface NSAppleEventManager : NSObject
+ (NSAppleEventManager *)sharedAppleEventManager;
- (void)setEventHandler:(id)handler
            andSelector:(SEL)selector
          forEventClass:(AEEventClass)eventClass
             andEventID:(AEEventID)eventID;
- (void)removeEventHandlerForEventClass:(AEEventClass)eventClass andEventID:(AEEventID)eventID;
@end

extern NSString *const NSDefaultRunLoopMode;
