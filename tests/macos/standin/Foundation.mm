// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Blocks.h"
#include "StandIn.h"
#import "StandInParts.h"

#include <QHash>

#include <cstdlib>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

QStringList living;
QHash<id, int> holders;

struct Delayed {
    id target;
    SEL selector;
    id argument;
    QStringList modes;
};
QList<Delayed> delayed;

struct Observer {
    id object;
    SEL selector;
    QString name;
    id center;
};
QList<Observer> observers;

struct EventHandler {
    id object = nil;
    SEL selector = nullptr;
} reopening;

QStringList heldActivities;

/// One object of a class, for as long as the process lives; the program neither makes nor keeps it.
template <class Object>
Object *shared(Class type)
{
    static Object *const object = [](Class type) {
        auto *const made = static_cast<Object *>([type alloc]);
        living.removeOne(QString::fromLatin1(class_getName(type)));
        return made;
    }(type);
    return object;
}

} // namespace

/// Stands for a block among the observers.
@interface BlockObserver : NSObject {
@public
    void *_block;
}
@end

/// A text that is not in the source.
@interface MadeString : NSString {
@public
    QString _text;
}
@end

@implementation NSObject

// The runtime asks for these wherever a class further down has members of C++.
static id nothingToDo(id self, SEL) { return self; }

+ (void)load
{
    for (const char *const name : {".cxx_construct", ".cxx_destruct"})
        class_addMethod(
            self, sel_registerName(name), reinterpret_cast<IMP>(reinterpret_cast<void (*)()>(nothingToDo)), "@@:");
}

+ (instancetype)alloc
{
    void *const memory = std::calloc(1, class_getInstanceSize(self));
    NSObject *const object = objc_constructInstance(self, memory);
    holders.insert(object, 1);
    living << QString::fromLatin1(class_getName(self));
    return object;
}

+ (Class)class
{
    return self;
}

- (instancetype)init
{
    return self;
}

- (instancetype)self
{
    return self;
}

- (instancetype)retain
{
    ++holders[self];
    return self;
}

- (void)release
{
    if (--holders[self] == 0)
        [self dealloc];
}

- (instancetype)autorelease
{
    return _objc_rootAutorelease(self);
}

- (id)copy
{
    return [self retain];
}

- (void)dealloc
{
    holders.remove(self);
    living.removeOne(QString::fromLatin1(object_getClassName(self)));
    objc_destructInstance(self);
    std::free(self);
}

- (BOOL)respondsToSelector:(SEL)selector
{
    return class_respondsToSelector(object_getClass(self), selector);
}

- (void)performSelector:(SEL)selector withObject:(id)argument afterDelay:(NSTimeInterval)delay inModes:(NSArray *)modes
{
    QStringList names;
    for (id mode : modes->_elements)
        names << plain(mode);
    delayed << Delayed{[self retain], selector, [argument retain], names};
}

@end

int RunLoop::turn(NSString *mode)
{
    int made = 0;
    const QList<Delayed> due = std::exchange(delayed, {});
    for (const Delayed &later : due) {
        if (!later.modes.contains(plain(mode))) {
            delayed << later;
            continue;
        }
        call(later.target, later.selector, later.argument);
        [later.target release];
        [later.argument release];
        ++made;
    }
    return made;
}

void call(id target, SEL selector, id first, id second)
{
    const auto method = reinterpret_cast<void (*)()>(class_getMethodImplementation(object_getClass(target), selector));
    reinterpret_cast<void (*)(id, SEL, id, id)>(method)(target, selector, first, second);
}

@implementation NSString

+ (instancetype)stringWithCharacters:(const unichar *)characters length:(NSUInteger)length
{
    MadeString *const made = [[[MadeString alloc] init] autorelease];
    made->_text = QString(reinterpret_cast<const QChar *>(characters), static_cast<qsizetype>(length));
    return made;
}

- (QString)standInText
{
    return {};
}

@end

@implementation MadeString

- (QString)standInText
{
    return _text;
}

@end

@implementation NSConstantString

- (instancetype)retain
{
    return self;
}

- (void)release
{
}

- (instancetype)autorelease
{
    return self;
}

- (QString)standInText
{
    return QString::fromUtf8(_bytes, _length);
}

@end

QString plain(NSString *text) { return text ? [text standInText] : QString(); }

NSString *native(const QString &text)
{
    return [NSString stringWithCharacters:reinterpret_cast<const unichar *>(text.utf16())
                                   length:static_cast<NSUInteger>(text.size())];
}

@implementation NSArray

+ (instancetype)arrayWithObjects:(const id *)objects count:(NSUInteger)count
{
    NSArray *const made = [[[self alloc] init] autorelease];
    for (NSUInteger index = 0; index < count; ++index)
        made->_elements << [objects[index] retain];
    return made;
}

- (void)dealloc
{
    for (id element : _elements)
        [element release];
    [super dealloc];
}

@end

@implementation NSDictionary {
@public
    id _onlyValue;
}

+ (instancetype)dictionaryWithObjects:(const id *)objects forKeys:(const id *)keys count:(NSUInteger)count
{
    NSDictionary *const made = [[[self alloc] init] autorelease];
    if (count != 1 || plain(keys[0]) != plain(NSFontAttributeName))
        qFatal("a font is all that this dictionary can hold");
    made->_onlyValue = [objects[0] retain];
    return made;
}

- (void)dealloc
{
    [_onlyValue release];
    [super dealloc];
}

@end

@implementation NSAttributedString

- (instancetype)initWithString:(NSString *)text attributes:(NSDictionary *)attributes
{
    _text = plain(text);
    _font = [attributes->_onlyValue retain];
    return self;
}

- (void)dealloc
{
    [_font release];
    [super dealloc];
}

@end

@implementation NSURL
@end

@implementation NSNotification
@end

@implementation NSOperationQueue
@end

@implementation BlockObserver

- (void)hear:(NSNotification *)notification
{
    reinterpret_cast<void (^)(NSNotification *)>(_block)(notification);
}

- (void)dealloc
{
    _Block_release(_block);
    [super dealloc];
}

@end

@implementation NSNotificationCenter

+ (NSNotificationCenter *)defaultCenter
{
    return shared<NSNotificationCenter>(self);
}

- (void)addObserver:(id)observer selector:(SEL)selector name:(NSString *)name object:(id)object
{
    observers << Observer{observer, selector, plain(name), self};
}

- (id)addObserverForName:(NSString *)name
                  object:(id)object
                   queue:(NSOperationQueue *)queue
              usingBlock:(void (^)(NSNotification *))block
{
    BlockObserver *const observer = [[BlockObserver alloc] init]; // the centre's, until it is removed
    observer->_block = _Block_copy(reinterpret_cast<const void *>(block));
    [self addObserver:observer selector:@selector(hear:) name:name object:object];
    return observer;
}

- (void)removeObserver:(id)observer
{
    const auto removed =
        observers.removeIf([&](const Observer &known) { return known.object == observer && known.center == self; });
    if (removed > 0 && object_getClass(observer) == [BlockObserver class])
        [observer release];
}

@end

void post(NSString *notification, NSNotificationCenter *center)
{
    const QList<Observer> told = observers; // they may go meanwhile
    for (const Observer &observer : told) {
        if (observer.center == center && observer.name == plain(notification))
            call(observer.object, observer.selector);
    }
}

@implementation NSProcessInfo

+ (NSProcessInfo *)processInfo
{
    return shared<NSProcessInfo>(self);
}

- (id<NSObject>)beginActivityWithOptions:(NSActivityOptions)options reason:(NSString *)reason
{
    if (options == NSActivityUserInitiatedAllowingIdleSystemSleep)
        heldActivities << plain(reason);
    return native(plain(reason));
}

- (void)endActivity:(id<NSObject>)activity
{
    heldActivities.removeOne(plain(static_cast<NSString *>(activity)));
}

@end

@implementation NSAppleEventDescriptor
@end

@implementation NSAppleEventManager

+ (NSAppleEventManager *)sharedAppleEventManager
{
    return shared<NSAppleEventManager>(self);
}

- (void)setEventHandler:(id)handler
            andSelector:(SEL)selector
          forEventClass:(AEEventClass)eventClass
             andEventID:(AEEventID)eventID
{
    if (eventClass == kCoreEventClass && eventID == kAEReopenApplication)
        reopening = {.object = handler, .selector = selector};
}

- (void)removeEventHandlerForEventClass:(AEEventClass)eventClass andEventID:(AEEventID)eventID
{
    if (eventClass == kCoreEventClass && eventID == kAEReopenApplication)
        reopening = {};
}

@end

NSString *const NSDefaultRunLoopMode = @"kCFRunLoopDefaultMode";

AppKit::Pool::Pool() : m_pool(objc_autoreleasePoolPush()) {}

AppKit::Pool::~Pool() { objc_autoreleasePoolPop(m_pool); }

QStringList AppKit::objects()
{
    QStringList sorted = living;
    sorted.sort();
    return sorted;
}

bool AppKit::reopen()
{
    if (!reopening.object)
        return false;
    call(reopening.object, reopening.selector);
    return true;
}

QStringList AppKit::activities() { return heldActivities; }
