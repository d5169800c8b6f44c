// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "BenchmarkAccount.h"
#include "Views/MenuBarView.h"

#include <benchmark/benchmark.h>

namespace {

/// All rows of the menu with figures; made anew after every write to the state.
void MenuRowsOfFigures(benchmark::State &run)
{
    const MenuBarView view(BenchmarkAccount::state());
    for (auto _ : run)
        benchmark::DoNotOptimize(view.body());
}
BENCHMARK(MenuRowsOfFigures)->Unit(benchmark::kMicrosecond)->UseRealTime()->Repetitions(9)->DisplayAggregatesOnly();

} // namespace
