// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

// What the program uses of AppKit and GNUstep's headers lack, with the macOS that brought it.
#pragma once

#import <AppKit/AppKit.h>

// 10.0
typedef unsigned int AEEventClass;
typedef unsigned int AEEventID;
enum : AEEventClass { kCoreEventClass = 0x61657674 };   // 'aevt'
enum : AEEventID { kAEReopenApplication = 0x72617070 }; // 'rapp'

@interface NSAppleEventManager (Newer)
+ (NSAppleEventManager *)sharedAppleEventManager; // 10.0
- (void)setEventHandler:(id)handler
            andSelector:(SEL)selector
          forEventClass:(AEEventClass)eventClass
             andEventID:(AEEventID)eventID;                                                     // 10.0
- (void)removeEventHandlerForEventClass:(AEEventClass)eventClass andEventID:(AEEventID)eventID; // 10.0
@end

@interface NSMenu (Newer)
- (void)cancelTracking; // 10.5
- (void)removeAllItems; // 10.6
@end

@interface NSStatusBarButton (Newer)
@property(copy) NSString *accessibilityTitle; // 10.10, for every view
@end

@interface NSStatusItem (Newer)
@property(readonly, strong) NSStatusBarButton *button; // 10.10
@property(copy) NSString *autosaveName;                // 10.12
@end

typedef CGFloat NSFontWeight;                  // 10.11
extern const NSFontWeight NSFontWeightRegular; // 10.11

@interface NSFont (Newer)
+ (NSFont *)monospacedDigitSystemFontOfSize:(CGFloat)fontSize weight:(NSFontWeight)weight; // 10.11
@end

@interface NSImage (Newer)
+ (instancetype)imageWithSystemSymbolName:(NSString *)name accessibilityDescription:(NSString *)description; // 11.0
@end
