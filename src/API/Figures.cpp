// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "API/Figures.h"

#include "API/InsightsResponse.h"
#include "Foundation/PlainNumber.h"

#include <QLatin1StringView>

#include <algorithm>
#include <array>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

constexpr std::array conversionActionTypes{"lead"_L1, "purchase"_L1, "complete_registration"_L1};

std::int64_t saturatingSum(std::int64_t a, std::int64_t b)
{
    constexpr auto highest = std::numeric_limits<std::int64_t>::max();
    constexpr auto lowest = std::numeric_limits<std::int64_t>::min();
    if (b > 0 && a > highest - b)
        return highest;
    if (b < 0 && a < lowest - b)
        return lowest;
    return a + b;
}

std::int64_t conversions(const InsightRow &row)
{
    std::int64_t sum = 0;
    for (const ActionItem &action : row.actions.value_or(std::vector<ActionItem>())) {
        const QString type = action.action_type.value_or(QString());
        // All three types count alike, duplicates included.
        if (std::ranges::any_of(conversionActionTypes, [&](QLatin1StringView result) { return type == result; }))
            sum = saturatingSum(sum, Figures::wholeNumber(action.value));
    }
    return sum;
}

} // namespace

std::int64_t Figures::wholeNumber(const std::optional<QString> &text)
{
    return PlainNumber::whole(text.value_or(u"0"_s)).value_or(0);
}

double Figures::amount(const std::optional<QString> &text)
{
    return PlainNumber::real(text.value_or(u"0"_s)).value_or(0.0);
}

TodayStats Figures::today(const InsightRow &row)
{
    return {
        .impressions = wholeNumber(row.impressions),
        .spend = amount(row.spend),
        .linkClicks = wholeNumber(row.inline_link_clicks),
        .cpc = amount(row.cost_per_inline_link_click),
    };
}

SevenDayStats Figures::sevenDay(const InsightRow &row)
{
    return {
        .spend = amount(row.spend),
        .impressions = wholeNumber(row.impressions),
        .frequency = amount(row.frequency),
        .reach = wholeNumber(row.reach),
        .cpc = amount(row.cost_per_inline_link_click),
        .ctr = amount(row.inline_link_click_ctr),
        .conversions = conversions(row),
    };
}
