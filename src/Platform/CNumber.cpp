// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Platform/CNumber.h"

#include <QString>

#include <array>
#include <charconv>
#include <cstdlib>
#include <limits>
#include <locale.h>
#if __has_include(<xlocale.h>)
#include <xlocale.h>
#endif

namespace {

locale_t cLocale()
{
    static const locale_t locale = newlocale(LC_ALL_MASK, "C", nullptr);
    return locale;
}

} // namespace

std::optional<double> CNumber::read(const QByteArray &text)
{
    constexpr QByteArrayView whiteSpace = " \t\n\v\f\r";
    if (text.isEmpty() || whiteSpace.contains(text.front()))
        return {};
    char *end = nullptr;
    // Qt calls setlocale, so plain strtod would read "12.5" as 12 in Germany.
    const double value = strtod_l(text.constData(), &end, cLocale());
    if (end != text.constData() + text.size()) // also when a NUL inside the text ended it early
        return {};
    return value;
}

QString CNumber::withTwoDecimals(double value)
{
    // The widest value has a sign, 309 digits, a point and two decimals.
    std::array<char, std::numeric_limits<double>::max_exponent10 + 5> text{};
    // Not QString's formats: they round ties the other way (0.125 is "0.12" in C).
    const auto [end, error] = std::to_chars(text.begin(), text.end(), value, std::chars_format::fixed, 2);
    Q_ASSERT(error == std::errc());
    return QString::fromLatin1(text.data(), end - text.data());
}
