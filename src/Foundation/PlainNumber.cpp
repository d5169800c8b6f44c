// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Foundation/PlainNumber.h"

#include <QByteArray>

#include <array>
#include <charconv>
#include <clocale>
#include <cstdlib>
#include <limits>
#if __has_include(<xlocale.h>)
#include <xlocale.h>
#endif

namespace {

locale_t cLocale()
{
    static const locale_t locale = newlocale(LC_ALL_MASK, "C", nullptr);
    return locale;
}

/// A byte for each character, with "?" for those that stand in no number. In UTF-8 a text may lose half a surrogate
/// pair.
QByteArray plainBytes(const QString &text) { return text.toLatin1(); }

} // namespace

std::optional<std::int64_t> PlainNumber::whole(const QString &text)
{
    const QByteArray bytes = plainBytes(text);
    // from_chars knows "-" alone as a sign; behind a "+" it must not find another one.
    const bool plus = bytes.startsWith('+');
    if (plus && bytes.startsWith("+-"))
        return {};
    const char *const end = bytes.cend();
    std::int64_t number = 0;
    const auto [parsed, error] = std::from_chars(bytes.cbegin() + (plus ? 1 : 0), end, number);
    if (error != std::errc() || parsed != end)
        return {};
    return number;
}

std::optional<double> PlainNumber::real(const QString &text)
{
    const QByteArray bytes = plainBytes(text);
    constexpr QByteArrayView whiteSpace = " \t\n\v\f\r";
    if (bytes.isEmpty() || whiteSpace.contains(bytes.front()))
        return {};
    char *end = nullptr;
    // Qt calls setlocale, so plain strtod would read "12.5" as 12 in Germany.
    const double value = strtod_l(bytes.constData(), &end, cLocale());
    if (end != bytes.cend()) // also when a NUL inside the text ended it early
        return {};
    return value;
}

QString PlainNumber::withTwoDecimals(double value)
{
    // The widest value has a sign, 309 digits, a point and two decimals.
    std::array<char, std::numeric_limits<double>::max_exponent10 + 5> text{};
    // Not QString's formats: they round ties the other way (0.125 is "0.12" in C).
    const auto [end, error] = std::to_chars(text.begin(), text.end(), value, std::chars_format::fixed, 2);
    Q_ASSERT(error == std::errc());
    return QString::fromLatin1(text.data(), end - text.data());
}
