// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

// The conversions of numbers agree with their oracle on every text and on every number.

#include "API/Figures.h"
#include "API/FormatNumber.h"
#include "Foundation/PlainNumber.h"
#include "Input.h"
#include "NumberOracle.h"
#include "Require.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstdio>
#include <limits>

namespace {

/// A decimal number out of range is one that the oracle does not know: infinite or next to nothing.
bool outOfRange(double value) { return std::isinf(value) || std::abs(value) <= std::numeric_limits<double>::min(); }

void checkText(const QString &text)
{
    const auto whole = PlainNumber::whole(text);
    require(whole == NumberOracle::whole(text), "a whole number is what it says");
    require(Figures::wholeNumber(text) == whole.value_or(0), "a figure that is no whole number is 0");

    const auto real = PlainNumber::real(text);
    const auto expected = NumberOracle::real(text);
    require(real.has_value() == expected.has_value(), "what is no number is refused, and nothing else");
    if (!real)
        return;
    const bool unknown = std::isnan(*expected) && !text.contains(u'n', Qt::CaseInsensitive);
    require(unknown ? outOfRange(*real) : NumberOracle::same(*real, *expected), "a real number is what it says");
    require(NumberOracle::same(Figures::amount(text), *real), "an amount is that number");
}

void checkReal(double number)
{
    std::array<char, 400> expected{};
    std::snprintf(expected.data(), expected.size(), "%.2f", number);
    require(PlainNumber::withTwoDecimals(number) == QLatin1StringView(expected.data()), "two decimals as in C");
}

void checkWhole(std::int64_t number)
{
    const QString plain = QString::number(number);
    const QString grouped = formatNumber(number);
    require(PlainNumber::whole(plain) == number, "a number written plainly reads as itself");
    require(QString(grouped).remove(u',') == plain, "grouping changes no digit");
    for (qsizetype i = 1; i <= grouped.size(); ++i) {
        const bool comma = grouped.at(grouped.size() - i) == u',';
        require(comma == (i % 4 == 0 && grouped.at(grouped.size() - i) != u'-'), "every third digit is set apart");
    }
    require(grouped.front() != u',', "no group is empty");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    Input bits(data, size);
    const auto number = bits.number<std::uint64_t>();
    checkReal(std::bit_cast<double>(number));
    checkWhole(static_cast<std::int64_t>(number));
    checkText(Input(data, size).text());
    return 0;
}
