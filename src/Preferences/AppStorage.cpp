// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Preferences/AppStorage.h"

#include "Foundation/PlainNumber.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

/// A number as the store keeps it: text in a file, or already a number where the store has types.
/// Lists and byte arrays are of another kind, although Qt would convert some of them.
bool isScalar(const QVariant &stored)
{
    switch (stored.typeId()) {
    case QMetaType::QString:
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::Double:
        return true;
    default:
        return false;
    }
}

/// Where the store has types, a whole number may have been written as a real one.
std::optional<std::int64_t> whole(double number)
{
    constexpr double end = 9223372036854775808.0; // 2^63, the first beyond
    const bool fits = number >= -end && number < end && std::trunc(number) == number;
    return fits ? std::optional(static_cast<std::int64_t>(number)) : std::nullopt;
}

} // namespace

template <>
std::optional<QString> preferenceAs(const QVariant &stored)
{
    return stored.typeId() == QMetaType::QString ? std::optional(stored.toString()) : std::nullopt;
}

template <>
std::optional<std::int64_t> preferenceAs(const QVariant &stored)
{
    if (stored.typeId() == QMetaType::Double)
        return whole(stored.toDouble());
    return isScalar(stored) ? PlainNumber::whole(stored.toString()) : std::nullopt;
}

template <>
std::optional<double> preferenceAs(const QVariant &stored)
{
    bool isNumber = false;
    const double number = isScalar(stored) ? stored.toDouble(&isNumber) : 0.0;
    return isNumber && std::isfinite(number) ? std::optional(number) : std::nullopt;
}

template <>
std::optional<bool> preferenceAs(const QVariant &stored)
{
    const QString text = isScalar(stored) ? stored.toString() : QString();
    if (text == "true"_L1 || text == "1"_L1)
        return true;
    if (text == "false"_L1 || text == "0"_L1)
        return false;
    return {};
}
