// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "StandIn.h"
#import "StandInParts.h"

#include <QHash>
#include <QPainter>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

QStringList asked;
QHash<qint64, NSRunningApplication *> &programs = *new QHash<qint64, NSRunningApplication *>; // to the very end
QList<NSStatusItem *> inTheBar;
bool tracking = false;
QRectF drawnPlace;

} // namespace

NSString *const NSApplicationDidHideNotification = @"NSApplicationDidHideNotification";
NSString *const NSApplicationWillFinishLaunchingNotification = @"NSApplicationWillFinishLaunchingNotification";
NSString *const NSDeviceRGBColorSpace = @"NSDeviceRGBColorSpace";
NSString *const NSEventTrackingRunLoopMode = @"NSEventTrackingRunLoopMode";
NSString *const NSFontAttributeName = @"NSFont";
NSString *const NSModalPanelRunLoopMode = @"NSModalPanelRunLoopMode";
NSString *const NSWorkspaceDidWakeNotification = @"NSWorkspaceDidWakeNotification";
const CGFloat NSVariableStatusItemLength = -1.0;
const NSFontWeight NSFontWeightRegular = 0.0;

// The program.

NSApplication *NSApp = nil;

@implementation NSApplication

+ (void)load
{
    NSApp = [[self alloc] init];
}

- (void)activateIgnoringOtherApps:(BOOL)flag
{
    asked << (flag ? u"activate"_s : u"activate politely"_s);
}

- (void)hide:(id)sender
{
    asked << u"hide"_s;
}

- (void)unhideWithoutActivation
{
    asked << u"unhide"_s;
}

@end

@implementation NSRunningApplication

+ (NSRunningApplication *)runningApplicationWithProcessIdentifier:(pid_t)process
{
    return programs.value(process);
}

- (void)setBundle:(const QString &)path
{
    [_bundleURL release];
    _bundleURL = nil;
    if (path.isEmpty())
        return;
    _bundleURL = [[NSURL alloc] init];
    _bundleURL->_text = u"file://"_s + path;
}

@end

@implementation NSWorkspace

+ (NSWorkspace *)sharedWorkspace
{
    static NSWorkspace *const workspace = [[self alloc] init];
    return workspace;
}

- (instancetype)init
{
    _notificationCenter = [[NSNotificationCenter alloc] init];
    return self;
}

- (BOOL)openURL:(NSURL *)url
{
    if (!url)
        qFatal("nothing to open");
    asked << u"open "_s + url->_text;
    return YES;
}

@end

@implementation NSWindow

- (void)orderFrontRegardless
{
    asked << u"front"_s;
}

@end

@implementation NSView

- (instancetype)init
{
    _window = [[NSWindow alloc] init];
    return self;
}

@end

// The menu bar.

@implementation NSFont {
@public
    QString _name;
}

+ (NSFont *)named:(const QString &)name size:(CGFloat)size
{
    NSFont *const font = [[[self alloc] init] autorelease];
    font->_pointSize = size > 0.0 ? size : 13.0;
    font->_name = u"%1 %2"_s.arg(name).arg(font->_pointSize);
    return font;
}

+ (NSFont *)boldSystemFontOfSize:(CGFloat)size
{
    return [self named:u"bold"_s size:size];
}

+ (NSFont *)menuBarFontOfSize:(CGFloat)size
{
    return [self named:u"menu bar"_s size:size > 0.0 ? size : 14.0];
}

+ (NSFont *)menuFontOfSize:(CGFloat)size
{
    return [self named:u"menu"_s size:size];
}

+ (NSFont *)monospacedDigitSystemFontOfSize:(CGFloat)size weight:(NSFontWeight)weight
{
    return [self named:weight == NSFontWeightRegular ? u"steady digits"_s : u"heavy digits"_s size:size];
}

+ (CGFloat)smallSystemFontSize
{
    return 11.0;
}

@end

namespace {

QString nameOf(NSFont *font) { return font ? font->_name : QString(); }

} // namespace

@implementation NSMenuItem {
@public
    bool _separator;
}

+ (NSMenuItem *)separatorItem
{
    NSMenuItem *const item = [[[self alloc] init] autorelease];
    item->_separator = true;
    return item;
}

- (instancetype)init
{
    _enabled = YES;
    return self;
}

- (void)dealloc
{
    [_title release];
    [_attributedTitle release];
    [super dealloc];
}

@end

@implementation NSMenu {
@public
    QList<NSMenuItem *> _items;
}

- (instancetype)initWithTitle:(NSString *)title
{
    _autoenablesItems = YES;
    return self;
}

- (void)dealloc
{
    [self removeAllItems];
    [super dealloc];
}

- (void)addItem:(NSMenuItem *)item
{
    _items << [item retain];
}

- (void)removeAllItems
{
    for (NSMenuItem *item : std::exchange(_items, {}))
        [item release];
}

- (NSMenuItem *)itemAtIndex:(NSInteger)index
{
    return _items.at(index);
}

- (void)cancelTracking
{
    AppKit::closeMenu();
}

@end

@implementation NSStatusBarButton

- (void)dealloc
{
    [_title release];
    [_accessibilityTitle release];
    [_font release];
    [super dealloc];
}

@end

@implementation NSStatusItem

- (instancetype)init
{
    _button = [[NSStatusBarButton alloc] init];
    return self;
}

- (void)dealloc
{
    [_autosaveName release];
    [_menu release];
    [_button release];
    [super dealloc];
}

@end

@implementation NSStatusBar

+ (NSStatusBar *)systemStatusBar
{
    static NSStatusBar *const bar = [[self alloc] init];
    return bar;
}

- (NSStatusItem *)statusItemWithLength:(CGFloat)length
{
    inTheBar << [[NSStatusItem alloc] init];
    return inTheBar.last();
}

- (void)removeStatusItem:(NSStatusItem *)item
{
    if (inTheBar.removeOne(item))
        [item release];
}

@end

// Pictures.

@implementation NSBitmapImageRep {
@public
    QByteArray _pixels;
    QSize _size;
}

- (instancetype)initWithBitmapDataPlanes:(unsigned char **)planes
                              pixelsWide:(NSInteger)width
                              pixelsHigh:(NSInteger)height
                           bitsPerSample:(NSInteger)bitsPerSample
                         samplesPerPixel:(NSInteger)samplesPerPixel
                                hasAlpha:(BOOL)alpha
                                isPlanar:(BOOL)planar
                          colorSpaceName:(NSString *)colorSpace
                             bytesPerRow:(NSInteger)bytesPerRow
                            bitsPerPixel:(NSInteger)bitsPerPixel
{
    _size = QSize(static_cast<int>(width), static_cast<int>(height));
    _bytesPerRow = width * samplesPerPixel * bitsPerSample / 8 + 64; // as wide as it likes
    _pixels = QByteArray(_bytesPerRow * height, '\x5A');             // and full of what was there before
    return self;
}

- (void)dealloc
{
    _pixels.fill('\x5A'); // whoever looks at it from now on sees it
    [super dealloc];
}

- (unsigned char *)bitmapData
{
    return reinterpret_cast<unsigned char *>(_pixels.data());
}

@end

@implementation NSGraphicsContext {
@public
    NSBitmapImageRep *_bitmap;
}

static NSGraphicsContext *current = nil;
static QList<NSGraphicsContext *> saved;

+ (NSGraphicsContext *)graphicsContextWithBitmapImageRep:(NSBitmapImageRep *)bitmap
{
    NSGraphicsContext *const context = [[[self alloc] init] autorelease];
    context->_bitmap = [bitmap retain];
    return context;
}

+ (NSGraphicsContext *)currentContext
{
    return current;
}

+ (void)setCurrentContext:(NSGraphicsContext *)context
{
    [context retain];
    [current release];
    current = context;
}

+ (void)saveGraphicsState
{
    saved << [current retain];
}

+ (void)restoreGraphicsState
{
    if (saved.isEmpty())
        qFatal("nothing was saved");
    [current release];
    current = saved.takeLast();
}

- (void)dealloc
{
    [_bitmap release];
    [super dealloc];
}

@end

@implementation NSImage

+ (instancetype)imageWithSystemSymbolName:(NSString *)name accessibilityDescription:(NSString *)description
{
    if (plain(name) != u"checkmark.circle.fill"_s)
        return nil;
    NSImage *const image = [[[self alloc] init] autorelease];
    image->_size = {20.0, 16.0};
    return image;
}

- (void)drawInRect:(NSRect)place
{
    drawnPlace = {place.origin.x, place.origin.y, place.size.width, place.size.height};
    NSBitmapImageRep *const bitmap = current->_bitmap;
    QImage target(bitmap.bitmapData, bitmap->_size.width(), bitmap->_size.height(), bitmap.bytesPerRow,
        QImage::Format_RGBA8888_Premultiplied);
    QPainter(&target).fillRect(drawnPlace, Qt::black);
}

@end

// The user.

namespace {

NSMenu *theMenu() { return inTheBar.isEmpty() ? nil : inTheBar.first().menu; }

bool isAwake(NSMenuItem *item)
{
    const bool enabled =
        theMenu().autoenablesItems ? [item.target respondsToSelector:item.action] != NO : item.isEnabled != NO;
    return enabled && !item->_separator;
}

} // namespace

QList<AppKit::StatusItem> AppKit::statusItems()
{
    QList<StatusItem> items;
    for (NSStatusItem *item : std::as_const(inTheBar))
        items << StatusItem{plain(item.button.title), plain(item.button.accessibilityTitle), plain(item.autosaveName),
            nameOf(item.button.font)};
    return items;
}

QList<AppKit::Item> AppKit::menu()
{
    QList<Item> rows;
    for (NSMenuItem *item : std::as_const(theMenu()->_items)) {
        NSAttributedString *const styled = item.attributedTitle;
        // Of an item that has both titles the styled one is shown.
        rows << Item{styled ? styled->_text : plain(item.title), styled ? nameOf(styled->_font) : QString(),
            item->_separator, isAwake(item), item};
    }
    return rows;
}

void AppKit::openMenu()
{
    if (std::exchange(tracking, true))
        return;
    NSMenu *const menu = theMenu();
    if ([static_cast<NSObject *>(menu.delegate) respondsToSelector:@selector(menuWillOpen:)])
        [menu.delegate menuWillOpen:menu];
}

bool AppKit::isMenuOpen() { return tracking; }

void AppKit::closeMenu()
{
    if (!std::exchange(tracking, false))
        return;
    NSMenu *const menu = theMenu();
    if ([static_cast<NSObject *>(menu.delegate) respondsToSelector:@selector(menuDidClose:)])
        [menu.delegate menuDidClose:menu];
}

void AppKit::sendAction(qsizetype index)
{
    NSMenu *const menu = theMenu();
    NSMenuItem *const item = menu->_items.at(index);
    if (!isAwake(item) || !item.action || !item.target)
        return;
    [item retain];
    call(item.target, item.action, item);
    [item release];
}

int AppKit::runLoop(Mode mode)
{
    switch (mode) {
    case Mode::ModalPanel:
        return RunLoop::turn(NSModalPanelRunLoopMode);
    case Mode::Tracking:
        return RunLoop::turn(NSEventTrackingRunLoopMode);
    case Mode::Default:
        break;
    }
    if (tracking)
        qFatal("while a menu is open, the run loop is in its mode");
    return RunLoop::turn(NSDefaultRunLoopMode);
}

QStringList AppKit::requests() { return std::exchange(asked, {}); }

quintptr AppKit::view()
{
    static NSView *const view = [[NSView alloc] init];
    return reinterpret_cast<quintptr>(view);
}

void AppKit::finishLaunching()
{
    post(NSApplicationWillFinishLaunchingNotification, NSNotificationCenter.defaultCenter);
}

void AppKit::finishHiding() { post(NSApplicationDidHideNotification, NSNotificationCenter.defaultCenter); }

void AppKit::wake() { post(NSWorkspaceDidWakeNotification, NSWorkspace.sharedWorkspace.notificationCenter); }

void AppKit::setRunning(qint64 process, const QString &bundle)
{
    if (!programs.contains(process))
        programs.insert(process, [[NSRunningApplication alloc] init]);
    [programs.value(process) setBundle:bundle];
}

QRectF AppKit::symbolPlace() { return drawnPlace; }
