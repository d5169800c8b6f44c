// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

// What the parts of the stand-in know of each other.
#pragma once

#import <AppKit/AppKit.h>

#include <QImage>
#include <QVariant>

@interface NSObject (StandIn)
- (instancetype)retain;
- (void)release;
- (instancetype)autorelease;
- (id)copy;
@end

/// What the compiler makes of @"text".
@interface NSConstantString : NSString {
    const char *_bytes;
    unsigned int _length;
}
@end

/// The text of either kind; none for nil.
QString plain(NSString *text);
NSString *native(const QString &text);

@interface NSArray () {
@public
    QList<id> _elements;
}
@end

@interface NSAttributedString () {
@public
    QString _text;
    id _font;
}
@end

@interface NSURL () {
@public
    QString _text;
}
@end

/// Calls a method that takes two objects, or fewer.
void call(id target, SEL selector, id first = nil, id second = nil);
/// Each centre has posts of its own.
void post(NSString *notification, NSNotificationCenter *center);

/// Makes the calls that are due in a mode; how many these were.
namespace RunLoop {
int turn(NSString *mode);
}
