// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "API/Figures.h"
#include "API/InsightsResponse.h"
#include "BenchmarkBody.h"
#include "Foundation/Decoding.h"
#include "Foundation/JsonReader.h"

#include <QCoreApplication>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <ctime>

namespace {

SevenDayStats statsOf(const QByteArray &body)
{
    const auto response = decodeJson<InsightsResponse>(body);
    return Figures::sevenDay(response->data->front());
}

/// From bytes to values, by the number of actions in the body.
void BodyDecodes(benchmark::State &run)
{
    const QByteArray body = bodyWithActions(run.range(0));
    for (auto _ : run)
        benchmark::DoNotOptimize(decodeJson<InsightsResponse>(body));
    run.SetBytesProcessed(run.iterations() * body.size());
    run.SetComplexityN(run.range(0));
}
BENCHMARK(BodyDecodes)->RangeMultiplier(8)->Range(8, 32768)->Complexity()->Unit(benchmark::kMicrosecond);

QCoro::Task<> decodeAndTell(QByteArray body, bool &done)
{
    co_await decoded(body, &statsOf);
    done = true;
}

/// Milliseconds that the main thread has worked.
double worked()
{
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

/// The most that the main thread works between two looks at its events while a body is decoded: what a click waits for.
/// Its own time, since on a busy machine it may wait for the processor as well.
void measurePause(benchmark::State &run, const QByteArray &body)
{
    double longest = 0.0;
    for (auto _ : run) {
        bool done = false;
        double before = worked();
        decodeAndTell(body, done);
        do {
            longest = std::max(longest, worked() - before);
            before = worked();
            QCoreApplication::processEvents();
        } while (!done);
        longest = std::max(longest, worked() - before);
    }
    run.SetBytesProcessed(run.iterations() * body.size());
    run.counters["longest_pause_ms"] = longest;
}

void SmallBodyPauses(benchmark::State &run) { measurePause(run, bodyWithActions(20)); }
BENCHMARK(SmallBodyPauses)->UseRealTime()->Unit(benchmark::kMicrosecond);

void BodyAtTheBoundOfSmallOnesPauses(benchmark::State &run) { measurePause(run, bodyWithActions(260)); }
BENCHMARK(BodyAtTheBoundOfSmallOnesPauses)->UseRealTime()->Unit(benchmark::kMicrosecond);

void LargestBodyPauses(benchmark::State &run) { measurePause(run, largestBody()); }
BENCHMARK(LargestBodyPauses)->UseRealTime()->Unit(benchmark::kMillisecond);

} // namespace
