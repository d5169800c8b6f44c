// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Update/UpdateManager.h"

#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;

namespace {

/// Two versions that differ in the last of so many pieces.
void VersionsCompare(benchmark::State &run)
{
    const QString same = u"12."_s.repeated(run.range(0) - 1);
    const QString newer = same + u'2';
    const QString older = same + u'1';
    for (auto _ : run)
        benchmark::DoNotOptimize(UpdateManager::isVersionNewer(newer, older));
    run.SetComplexityN(run.range(0));
}
BENCHMARK(VersionsCompare)->RangeMultiplier(4)->Range(3, 3072)->Complexity();

} // namespace
