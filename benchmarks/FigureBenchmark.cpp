// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "API/Figures.h"
#include "API/FormatNumber.h"
#include "API/InsightsResponse.h"
#include "Foundation/PlainNumber.h"

#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;

namespace {

/// From texts to figures, by the number of actions that a row has.
void RowConverts(benchmark::State &run)
{
    const ActionItem action{.action_type = u"purchase"_s, .value = u"3"_s};
    InsightRow row;
    row.impressions = u"361324"_s;
    row.spend = u"5339.5"_s;
    row.frequency = u"2"_s;
    row.reach = u"180662"_s;
    row.actions.emplace(static_cast<std::size_t>(run.range(0)), action);
    for (auto _ : run)
        benchmark::DoNotOptimize(Figures::sevenDay(row));
    run.SetComplexityN(run.range(0));
}
BENCHMARK(RowConverts)->RangeMultiplier(8)->Range(8, 32768)->Complexity()->Unit(benchmark::kMicrosecond);

void AmountIsRead(benchmark::State &run)
{
    const std::optional<QString> text = u"1234.567891"_s;
    for (auto _ : run)
        benchmark::DoNotOptimize(Figures::amount(text));
}
BENCHMARK(AmountIsRead);

void AmountIsWritten(benchmark::State &run)
{
    for (auto _ : run)
        benchmark::DoNotOptimize(PlainNumber::withTwoDecimals(1234.567891));
}
BENCHMARK(AmountIsWritten);

void CountIsWritten(benchmark::State &run)
{
    for (auto _ : run)
        benchmark::DoNotOptimize(formatNumber(1234567));
}
BENCHMARK(CountIsWritten);

} // namespace
