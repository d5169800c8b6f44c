// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

// What the program uses of AppKit, declared as its documentation has it.
#pragma once

#import <Foundation/Foundation.h>

@class NSMenu, NSWindow;

extern NSString *const NSApplicationDidHideNotification;
extern NSString *const NSApplicationWillFinishLaunchingNotification;
extern NSString *const NSDeviceRGBColorSpace;
extern NSString *const NSEventTrackingRunLoopMode;
extern NSString *const NSFontAttributeName;
extern NSString *const NSModalPanelRunLoopMode;
extern NSString *const NSWorkspaceDidWakeNotification;

@interface NSApplication : NSObject
- (void)activateIgnoringOtherApps:(BOOL)flag;
- (void)hide:(id)sender;
- (void)unhideWithoutActivation;
@end
extern NSApplication *NSApp;

@interface NSRunningApplication : NSObject
+ (NSRunningApplication *)runningApplicationWithProcessIdentifier:(pid_t)process;
@property(nonatomic, readonly) NSURL *bundleURL;
@end

@interface NSWorkspace : NSObject
+ (NSWorkspace *)sharedWorkspace;
- (BOOL)openURL:(NSURL *)url;
@property(nonatomic, readonly) NSNotificationCenter *notificationCenter;
@end

@interface NSView : NSObject
@property(nonatomic, readonly) NSWindow *window;
@end

@interface NSWindow : NSObject
- (void)orderFrontRegardless;
@end

using NSFontWeight = CGFloat;
extern const NSFontWeight NSFontWeightRegular;

@interface NSFont : NSObject
+ (NSFont *)boldSystemFontOfSize:(CGFloat)size;
+ (NSFont *)menuBarFontOfSize:(CGFloat)size;
+ (NSFont *)menuFontOfSize:(CGFloat)size;
+ (NSFont *)monospacedDigitSystemFontOfSize:(CGFloat)size weight:(NSFontWeight)weight;
+ (CGFloat)smallSystemFontSize;
@property(nonatomic, readonly) CGFloat pointSize;
@end

@interface NSMenuItem : NSObject
+ (NSMenuItem *)separatorItem;
@property(nonatomic, copy) NSString *title;
@property(nonatomic, copy) NSAttributedString *attributedTitle;
@property(nonatomic, getter=isEnabled) BOOL enabled;
@property(nonatomic, assign) id target;
@property(nonatomic) SEL action;
@end

@protocol NSMenuDelegate <NSObject>
@optional
- (void)menuWillOpen:(NSMenu *)menu;
- (void)menuDidClose:(NSMenu *)menu;
@end

@interface NSMenu : NSObject
- (instancetype)initWithTitle:(NSString *)title;
- (void)addItem:(NSMenuItem *)item;
- (void)removeAllItems;
- (NSMenuItem *)itemAtIndex:(NSInteger)index;
- (void)cancelTracking;
@property(nonatomic) BOOL autoenablesItems;
@property(nonatomic, assign) id<NSMenuDelegate> delegate;
@end

@interface NSStatusBarButton : NSObject
@property(nonatomic, copy) NSString *title;
@property(nonatomic, copy) NSString *accessibilityTitle;
@property(nonatomic, retain) NSFont *font;
@end

@interface NSStatusItem : NSObject
@property(nonatomic, copy) NSString *autosaveName;
@property(nonatomic, retain) NSMenu *menu;
@property(nonatomic, readonly) NSStatusBarButton *button;
@end

extern const CGFloat NSVariableStatusItemLength;

@interface NSStatusBar : NSObject
+ (NSStatusBar *)systemStatusBar;
- (NSStatusItem *)statusItemWithLength:(CGFloat)length;
- (void)removeStatusItem:(NSStatusItem *)item;
@end

@interface NSImage : NSObject
+ (instancetype)imageWithSystemSymbolName:(NSString *)name accessibilityDescription:(NSString *)description;
- (void)drawInRect:(NSRect)place;
@property(nonatomic, readonly) NSSize size;
@end

@interface NSBitmapImageRep : NSObject
- (instancetype)initWithBitmapDataPlanes:(unsigned char **)planes
                              pixelsWide:(NSInteger)width
                              pixelsHigh:(NSInteger)height
                           bitsPerSample:(NSInteger)bitsPerSample
                         samplesPerPixel:(NSInteger)samplesPerPixel
                                hasAlpha:(BOOL)alpha
                                isPlanar:(BOOL)planar
                          colorSpaceName:(NSString *)colorSpace
                             bytesPerRow:(NSInteger)bytesPerRow
                            bitsPerPixel:(NSInteger)bitsPerPixel;
@property(nonatomic, readonly) unsigned char *bitmapData;
@property(nonatomic, readonly) NSInteger bytesPerRow;
@end

@interface NSGraphicsContext : NSObject
+ (NSGraphicsContext *)graphicsContextWithBitmapImageRep:(NSBitmapImageRep *)bitmap;
+ (void)saveGraphicsState;
+ (void)restoreGraphicsState;
@property(class, nonatomic, retain) NSGraphicsContext *currentContext;
@end
