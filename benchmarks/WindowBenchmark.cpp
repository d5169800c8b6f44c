// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "BenchmarkAccount.h"
#include "Views/WindowManager.h"

#include <QApplication>
#include <QEvent>
#include <QLabel>

#include <benchmark/benchmark.h>

#include <functional>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

/// Sees that a window paints; all of it has painted by the time it is asked.
class PaintWatch : public QObject {
public:
    PaintWatch() { qApp->installEventFilter(this); }

    bool hasPainted() const { return m_hasPainted; }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint && watched->isWidgetType())
            m_hasPainted = true;
        return false;
    }

private:
    bool m_hasPainted = false;
};

/// From the command to the end of the turn of the event loop in which the window painted itself.
void openAndPaint(const std::function<void()> &open)
{
    const PaintWatch watch;
    open();
    while (!watch.hasPainted())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

void finishClosing()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

void measureWindow(benchmark::State &run, const std::function<void()> &open)
{
    for (auto _ : run) {
        openAndPaint(open);
        run.PauseTiming();
        WindowManager::shared().closeAll();
        finishClosing();
        run.ResumeTiming();
    }
}

void openSettings() { WindowManager::shared().openSettings(BenchmarkAccount::state()); }

/// Real time, since that is what the user waits for.
void windows(benchmark::internal::Benchmark *benchmark)
{
    benchmark->Unit(benchmark::kMillisecond)->UseRealTime()->Repetitions(9)->DisplayAggregatesOnly();
}

/// The first click after the start, when neither fonts nor style have drawn anything; measured before all others.
void FirstSettingsWindowOpens(benchmark::State &run) { measureWindow(run, openSettings); }
BENCHMARK(FirstSettingsWindowOpens)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);

void SettingsWindowOpens(benchmark::State &run) { measureWindow(run, openSettings); }
BENCHMARK(SettingsWindowOpens)->Apply(windows);

void SetupGuideOpens(benchmark::State &run)
{
    measureWindow(run, [] { WindowManager::shared().openSetupGuide(); });
}
BENCHMARK(SetupGuideOpens)->Apply(windows);

/// The yardstick: what any window of the toolkit costs on this machine.
void PlainWindowOpens(benchmark::State &run)
{
    for (auto _ : run) {
        std::unique_ptr<QWidget> window;
        openAndPaint([&window] {
            window = std::make_unique<QWidget>();
            window->resize(500, 520);
            new QLabel(u"Text"_s, window.get());
            window->show();
        });
        run.PauseTiming();
        window.reset();
        finishClosing();
        run.ResumeTiming();
    }
}
BENCHMARK(PlainWindowOpens)->Apply(windows);

} // namespace
