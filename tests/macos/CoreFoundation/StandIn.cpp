// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "StandIn.h"

#include <CoreFoundation/CoreFoundation.h>

#include <QHash>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

/// Behind every reference stands one of these.
struct Object {
    QVariant value;
    int holders = 1;
};

enum Kind : CFTypeID { Other, Text, Flag, Number };

int inUse = 0;
QHash<QString, QVariant> disk;      // by domain and key
QHash<QString, QVariant> snapshot;  // the disk as this process last saw it
QHash<QString, QVariant> unwritten; // what this process has set since
bool diskFails = false;

// Living as long as the process, they are nobody's.
Object yes{.value = true};
Object no{.value = false};
Object currentUser{.value = u"current user"_s};
Object anyHost{.value = u"any host"_s};

template <class Ref>
Ref made(const QVariant &value)
{
    ++inUse;
    return reinterpret_cast<Ref>(new Object{.value = value});
}

Object &object(CFTypeRef reference) { return *static_cast<Object *>(const_cast<void *>(reference)); }

bool isLasting(const Object &object)
{
    return &object == &yes || &object == &no || &object == &currentUser || &object == &anyHost;
}

QString place(const QString &domain, const QString &key) { return domain + u'/' + key; }

/// Where a process of this user finds its own values; elsewhere it finds nothing.
QString place(CFStringRef key, CFStringRef domain, CFStringRef user, CFStringRef host)
{
    const bool own = user == kCFPreferencesCurrentUser && host == kCFPreferencesAnyHost;
    return own ? place(object(domain).value.toString(), object(key).value.toString()) : QString();
}

} // namespace

const CFAllocatorRef kCFAllocatorDefault = nullptr;
const CFBooleanRef kCFBooleanTrue = reinterpret_cast<CFBooleanRef>(&yes);
const CFBooleanRef kCFBooleanFalse = reinterpret_cast<CFBooleanRef>(&no);
const CFStringRef kCFPreferencesCurrentUser = reinterpret_cast<CFStringRef>(&currentUser);
const CFStringRef kCFPreferencesAnyHost = reinterpret_cast<CFStringRef>(&anyHost);

CFTypeRef CFRetain(CFTypeRef reference)
{
    ++object(reference).holders;
    return reference;
}

void CFRelease(CFTypeRef reference)
{
    Object &released = object(reference);
    if (--released.holders > 0 || isLasting(released))
        return;
    delete &released;
    --inUse;
}

CFTypeID CFGetTypeID(CFTypeRef reference)
{
    switch (object(reference).value.typeId()) {
    case QMetaType::QString:
        return Text;
    case QMetaType::Bool:
        return Flag;
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
        return Number;
    default:
        return Other;
    }
}

CFTypeID CFStringGetTypeID() { return Text; }

CFStringRef CFStringCreateWithCharacters(CFAllocatorRef, const UniChar *characters, CFIndex count)
{
    return made<CFStringRef>(QString::fromUtf16(reinterpret_cast<const char16_t *>(characters), count));
}

CFIndex CFStringGetLength(CFStringRef text) { return object(text).value.toString().size(); }

void CFStringGetCharacters(CFStringRef text, CFRange range, UniChar *buffer)
{
    const QString part = object(text).value.toString().sliced(range.location, range.length);
    std::copy_n(part.utf16(), part.size(), buffer);
}

CFTypeID CFBooleanGetTypeID() { return Flag; }

Boolean CFBooleanGetValue(CFBooleanRef flag) { return object(flag).value.toBool(); }

CFTypeID CFNumberGetTypeID() { return Number; }

CFNumberRef CFNumberCreate(CFAllocatorRef, CFNumberType type, const void *value)
{
    return type == kCFNumberDoubleType ? made<CFNumberRef>(*static_cast<const double *>(value))
                                       : made<CFNumberRef>(*static_cast<const qlonglong *>(value));
}

Boolean CFNumberIsFloatType(CFNumberRef number) { return object(number).value.typeId() == QMetaType::Double; }

Boolean CFNumberGetValue(CFNumberRef number, CFNumberType type, void *value)
{
    const QVariant &stored = object(number).value;
    if (type == kCFNumberDoubleType)
        *static_cast<double *>(value) = stored.toDouble();
    else
        *static_cast<qlonglong *>(value) = stored.toLongLong();
    return stored.typeId() != QMetaType::ULongLong;
}

CFPropertyListRef CFPreferencesCopyValue(CFStringRef key, CFStringRef domain, CFStringRef user, CFStringRef host)
{
    const QString where = place(key, domain, user, host);
    const QVariant value = unwritten.value(where, snapshot.value(where));
    return value.isValid() ? made<CFPropertyListRef>(value) : nullptr;
}

void CFPreferencesSetValue(
    CFStringRef key, CFPropertyListRef value, CFStringRef domain, CFStringRef user, CFStringRef host)
{
    unwritten.insert(place(key, domain, user, host), object(value).value);
}

Boolean CFPreferencesAppSynchronize(CFStringRef)
{
    if (!diskFails) {
        disk.insert(unwritten);
        unwritten.clear();
    }
    snapshot = disk;
    return !diskFails;
}

QVariant CoreFoundation::stored(const QString &domain, const QString &key) { return disk.value(place(domain, key)); }

void CoreFoundation::write(const QString &domain, const QString &key, const QVariant &value)
{
    disk.insert(place(domain, key), value);
}

void CoreFoundation::clear()
{
    disk.clear();
    snapshot.clear();
    unwritten.clear();
}

void CoreFoundation::setDiskFails(bool fails) { diskFails = fails; }

int CoreFoundation::objectsInUse() { return inUse; }
