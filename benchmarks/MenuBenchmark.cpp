// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "App/VanteloApp.h"
#include "BenchmarkAccount.h"
#include "MenuBar/Linux/StatusItem/StatusDotImage.h"
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

/// Dot, text and sentence of the item.
void LabelOfFigures(benchmark::State &run)
{
    for (auto _ : run)
        benchmark::DoNotOptimize(VanteloApp::label(*BenchmarkAccount::state()));
}
BENCHMARK(LabelOfFigures)->Unit(benchmark::kMicrosecond);

/// One picture of the dot, by the length of its side; made once for each colour and size.
void DotIsDrawn(benchmark::State &run)
{
    for (auto _ : run)
        benchmark::DoNotOptimize(statusDotImage(StatusDot::Green, static_cast<int>(run.range(0))));
    run.SetComplexityN(run.range(0));
}
BENCHMARK(DotIsDrawn)->RangeMultiplier(2)->Range(16, 64)->Complexity()->Unit(benchmark::kMicrosecond);

} // namespace
