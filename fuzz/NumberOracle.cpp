// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "NumberOracle.h"

#include <QRegularExpression>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

__extension__ using Wide = __int128;

/// Sign, then either digits behind "0x", or "inf", "nan" and the like, or a decimal number.
const QRegularExpression &grammar()
{
    static const QRegularExpression expression(
        u"\\A([+-]?)(?:0x((?:[0-9a-f]+\\.?[0-9a-f]*|\\.[0-9a-f]+)(?:p[+-]?[0-9]+)?)"
        "|(inf|infinity|nan(?:\\([0-9a-z_]*\\))?)"
        "|((?:[0-9]+\\.?[0-9]*|\\.[0-9]+)(?:e[+-]?[0-9]+)?))\\z"_s,
        QRegularExpression::CaseInsensitiveOption);
    return expression;
}

double magnitude(const QByteArray &digits, std::chars_format format)
{
    double value = 0.0;
    const auto [end, error] = std::from_chars(digits.cbegin(), digits.cend(), value, format);
    return error == std::errc() && end == digits.cend() ? value : std::numeric_limits<double>::quiet_NaN();
}

} // namespace

std::optional<std::int64_t> NumberOracle::whole(const QString &text)
{
    const bool sign = text.startsWith(u'+') || text.startsWith(u'-');
    const QStringView digits = QStringView(text).sliced(sign ? 1 : 0);
    if (digits.isEmpty())
        return {};
    Wide value = 0;
    for (const QChar digit : digits) {
        if (digit < u'0' || digit > u'9')
            return {};
        // Stays beyond 64 bits once it is there.
        value = std::min(value * 10 + (digit.unicode() - u'0'), Wide{1} << 100);
    }
    if (text.startsWith(u'-'))
        value = -value;
    if (value < std::numeric_limits<std::int64_t>::min() || value > std::numeric_limits<std::int64_t>::max())
        return {};
    return static_cast<std::int64_t>(value);
}

std::optional<double> NumberOracle::real(const QString &text)
{
    const QRegularExpressionMatch match = grammar().match(text);
    if (!match.hasMatch())
        return {};
    double value = 0.0;
    if (!match.captured(2).isEmpty())
        value = magnitude(match.captured(2).toLatin1(), std::chars_format::hex);
    else if (!match.captured(4).isEmpty())
        value = magnitude(match.captured(4).toLatin1(), std::chars_format::general);
    else
        value = match.captured(3).startsWith(u'i', Qt::CaseInsensitive) ? std::numeric_limits<double>::infinity()
                                                                        : std::numeric_limits<double>::quiet_NaN();
    return match.captured(1) == u"-" ? -value : value;
}

bool NumberOracle::same(double a, double b)
{
    return (std::isnan(a) && std::isnan(b)) || (a == b && std::signbit(a) == std::signbit(b));
}
