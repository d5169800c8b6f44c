// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Preferences/DefaultsStore.h"

#include <QString>
#include <QVariant>

#include <cstdint>
#include <optional>
#include <utility>

/// The stored value as the given kind; nothing where it is absent or of another kind.
template <class Value>
std::optional<Value> preferenceAs(const QVariant &stored);
template <>
std::optional<QString> preferenceAs(const QVariant &stored);
template <>
std::optional<std::int64_t> preferenceAs(const QVariant &stored);
template <>
std::optional<double> preferenceAs(const QVariant &stored);
template <>
std::optional<bool> preferenceAs(const QVariant &stored);

/// One preference under its key. Every read consults the store, every write goes through at once; a read
/// returns the fallback, without writing it, where the key is absent or its value is of another kind.
template <class Value>
class AppStorage {
public:
    AppStorage(DefaultsStore &store, QString key, Value fallback)
        : m_store(store), m_key(std::move(key)), m_fallback(std::move(fallback))
    {
    }

    Value get() const { return preferenceAs<Value>(m_store.value(m_key)).value_or(m_fallback); }
    void set(const Value &value)
    {
        if (preferenceAs<Value>(m_store.value(m_key)) != value) // spares the disk where nothing changes
            m_store.setValue(m_key, stored(value));
    }

private:
    static QVariant stored(std::int64_t value) { return qlonglong{value}; }
    template <class Other>
    static QVariant stored(const Other &value)
    {
        return value;
    }

    DefaultsStore &m_store;
    QString m_key;
    Value m_fallback;
};
