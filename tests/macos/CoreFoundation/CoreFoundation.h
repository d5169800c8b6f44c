// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

// What the program uses of Core Foundation, declared as its documentation has it.
#pragma once

#include <cstdint>

extern "C" {

using Boolean = unsigned char;
using UniChar = std::uint16_t;
using CFIndex = long;
using CFTypeID = unsigned long;
using CFTypeRef = const void *;
using CFPropertyListRef = CFTypeRef;
using CFAllocatorRef = const struct CFAllocatorObject *;
using CFBooleanRef = const struct CFBooleanObject *;
using CFNumberRef = const struct CFNumberObject *;
using CFStringRef = const struct CFStringObject *;

extern const CFAllocatorRef kCFAllocatorDefault;
CFTypeRef CFRetain(CFTypeRef object);
void CFRelease(CFTypeRef object);
CFTypeID CFGetTypeID(CFTypeRef object);

struct CFRange {
    CFIndex location;
    CFIndex length;
};
inline CFRange CFRangeMake(CFIndex location, CFIndex length) { return {location, length}; }

CFTypeID CFStringGetTypeID();
CFStringRef CFStringCreateWithCharacters(CFAllocatorRef allocator, const UniChar *characters, CFIndex count);
CFIndex CFStringGetLength(CFStringRef text);
void CFStringGetCharacters(CFStringRef text, CFRange range, UniChar *buffer);

extern const CFBooleanRef kCFBooleanTrue;
extern const CFBooleanRef kCFBooleanFalse;
CFTypeID CFBooleanGetTypeID();
Boolean CFBooleanGetValue(CFBooleanRef flag);

enum CFNumberType : CFIndex { kCFNumberLongLongType = 11, kCFNumberDoubleType = 13 };
CFTypeID CFNumberGetTypeID();
CFNumberRef CFNumberCreate(CFAllocatorRef allocator, CFNumberType type, const void *value);
Boolean CFNumberIsFloatType(CFNumberRef number);
Boolean CFNumberGetValue(CFNumberRef number, CFNumberType type, void *value);

extern const CFStringRef kCFPreferencesCurrentUser;
extern const CFStringRef kCFPreferencesAnyHost;
CFPropertyListRef CFPreferencesCopyValue(CFStringRef key, CFStringRef domain, CFStringRef user, CFStringRef host);
void CFPreferencesSetValue(
    CFStringRef key, CFPropertyListRef value, CFStringRef domain, CFStringRef user, CFStringRef host);
Boolean CFPreferencesAppSynchronize(CFStringRef domain);

} // extern "C"
