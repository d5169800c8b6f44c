// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Preferences/PreferenceStorage.h"

#include "Foundation/Deployment.h"

#include <QTimer>

#include <CoreFoundation/CoreFoundation.h>

#include <type_traits>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

struct Release {
    void operator()(CFTypeRef object) const { CFRelease(object); }
};

template <class Ref>
using Owned = std::unique_ptr<std::remove_pointer_t<Ref>, Release>;

Owned<CFStringRef> text(const QString &text)
{
    return Owned<CFStringRef>(CFStringCreateWithCharacters(
        kCFAllocatorDefault, reinterpret_cast<const UniChar *>(text.utf16()), CFIndex{text.size()}));
}

QVariant fromText(CFStringRef stored)
{
    QString text(CFStringGetLength(stored), Qt::Uninitialized);
    CFStringGetCharacters(stored, CFRangeMake(0, CFIndex{text.size()}), reinterpret_cast<UniChar *>(text.data()));
    return text;
}

template <class Number>
QVariant fromNumber(CFNumberRef stored, CFNumberType type)
{
    Number number{};
    // Nothing for what does not fit, rather than another number.
    return CFNumberGetValue(stored, type, &number) ? QVariant(number) : QVariant();
}

QVariant fromStored(CFPropertyListRef stored)
{
    const CFTypeID kind = CFGetTypeID(stored);
    if (kind == CFStringGetTypeID())
        return fromText(static_cast<CFStringRef>(stored));
    if (kind == CFBooleanGetTypeID())
        return CFBooleanGetValue(static_cast<CFBooleanRef>(stored)) != 0;
    if (kind != CFNumberGetTypeID())
        return {};
    const auto number = static_cast<CFNumberRef>(stored);
    return CFNumberIsFloatType(number) ? fromNumber<double>(number, kCFNumberDoubleType)
                                       : fromNumber<qlonglong>(number, kCFNumberLongLongType);
}

Owned<CFPropertyListRef> toStored(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Bool:
        return Owned<CFPropertyListRef>(CFRetain(value.toBool() ? kCFBooleanTrue : kCFBooleanFalse));
    case QMetaType::Double: {
        const double number = value.toDouble();
        return Owned<CFPropertyListRef>(CFNumberCreate(kCFAllocatorDefault, kCFNumberDoubleType, &number));
    }
    case QMetaType::LongLong: {
        const qlonglong number = value.toLongLong();
        return Owned<CFPropertyListRef>(CFNumberCreate(kCFAllocatorDefault, kCFNumberLongLongType, &number));
    }
    default:
        return Owned<CFPropertyListRef>(text(value.toString()).release());
    }
}

/// The domain that "defaults" knows by the bundle's name. It is the user's alone: the system keeps it so.
class DefaultsDomain : public PreferenceStorage {
public:
    // This domain and no other: an absent key is not looked for in those shared with other programs.
    QVariant value(const QString &key) const override
    {
        const Owned<CFPropertyListRef> stored(
            CFPreferencesCopyValue(text(key).get(), m_domain.get(), kCFPreferencesCurrentUser, kCFPreferencesAnyHost));
        return stored ? fromStored(stored.get()) : QVariant();
    }
    void setValue(const QString &key, const QVariant &value) override
    {
        CFPreferencesSetValue(
            text(key).get(), toStored(value).get(), m_domain.get(), kCFPreferencesCurrentUser, kCFPreferencesAnyHost);
    }
    Outcome sync() override
    {
        return CFPreferencesAppSynchronize(m_domain.get()) != 0 ? Outcome::Done : Outcome::Failed;
    }
    /// The system tells nobody, so it is looked for.
    std::unique_ptr<QObject> watch(std::function<void()> changed) const override
    {
        auto timer = std::make_unique<QTimer>();
        timer->callOnTimeout(std::move(changed));
        timer->start(2s);
        return timer;
    }

private:
    Owned<CFStringRef> m_domain = text(u"app.vantelo."_s + Deployment::domain());
};

} // namespace

std::unique_ptr<PreferenceStorage> PreferenceStorage::open() { return std::make_unique<DefaultsDomain>(); }
