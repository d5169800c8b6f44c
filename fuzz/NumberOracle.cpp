// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "NumberOracle.h"

#include <QRegularExpression>

#include <algorithm>
#include <cmath>
#include <cstdint>
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

/// Not a number where it is out of range: Qt does not say at which end.
double decimal(const QByteArray &text)
{
    bool inRange = false;
    const double value = text.toDouble(&inRange);
    return inRange ? value : std::numeric_limits<double>::quiet_NaN();
}

/// The number nearest to `bits` times two to the `exponent`, the even one of two that are as near.
double rounded(Wide bits, std::int64_t exponent)
{
    std::int64_t length = 0;
    while (bits >> length > 0)
        ++length;
    constexpr std::int64_t smallest = -1074; // of the exponents
    const std::int64_t dropped = std::max({length - 53, smallest - exponent, std::int64_t{0}});
    if (bits == 0 || dropped > length + 1)
        return 0.0;
    const Wide unit = Wide{1} << dropped;
    const Wide rest = bits % unit;
    const bool up = rest * 2 > unit || (rest * 2 == unit && bits / unit % 2 == 1);
    return std::ldexp(static_cast<double>(bits / unit + (up ? 1 : 0)), static_cast<int>(exponent + dropped));
}

/// By hand, because not every library reads them.
double hexadecimal(const QString &text)
{
    const qsizetype power = text.indexOf(u'p', 0, Qt::CaseInsensitive);
    const QString written = power < 0 ? u"0"_s : text.sliced(power + 1);
    constexpr std::int64_t far = 1'000'000; // beyond what any number of digits makes up for
    const std::int64_t beyond = written.startsWith(u'-') ? -far : far;
    std::int64_t exponent = std::clamp(NumberOracle::whole(written).value_or(beyond), -far, far);
    Wide bits = 0;
    bool behindPoint = false;
    for (const QChar character : text.first(power < 0 ? text.size() : power)) {
        if (character == u'.') {
            behindPoint = true;
            continue;
        }
        const int digit = QString(character).toInt(nullptr, 16);
        const bool room = bits < Wide{1} << 64;
        bits = room ? bits * 16 + digit : bits | (digit == 0 ? 0 : 1); // of what finds no room, whether it is nothing
        exponent += (room ? 0 : 4) - (behindPoint ? 4 : 0);
    }
    return rounded(bits, exponent);
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
        value = hexadecimal(match.captured(2));
    else if (!match.captured(4).isEmpty())
        value = decimal(match.captured(4).toLatin1());
    else
        value = match.captured(3).startsWith(u'i', Qt::CaseInsensitive) ? std::numeric_limits<double>::infinity()
                                                                        : std::numeric_limits<double>::quiet_NaN();
    return match.captured(1) == u"-" ? -value : value;
}

bool NumberOracle::same(double a, double b)
{
    return (std::isnan(a) && std::isnan(b)) || (a == b && std::signbit(a) == std::signbit(b));
}
