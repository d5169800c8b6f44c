// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Machine/MachineAlarm.h"
#include "Machine/MachineTime.h"
#include "Machine/macOS/Waking.h"

#include <QList>
#include <QTest>

#include <utility>

using namespace std::chrono_literals;

namespace {

std::chrono::nanoseconds now{};
QList<std::chrono::nanoseconds> coming; // what later looks at the clock see, one after the other
std::weak_ptr<std::function<void()>> listener;

void wake()
{
    if (const auto woke = listener.lock())
        (*woke)();
}

} // namespace

std::chrono::nanoseconds MachineTime::elapsed()
{
    if (!coming.isEmpty())
        now = coming.takeFirst();
    return now;
}

std::shared_ptr<void> onWaking(std::function<void()> woke)
{
    const auto held = std::make_shared<std::function<void()>>(std::move(woke));
    listener = held;
    return held;
}

/// The alarm on macOS, on a clock and a sleep of the test's.
class MachineAlarmTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        now = 0ns;
        coming.clear();
        m_wentOff = 0;
        m_alarm = MachineAlarm::create([this] { ++m_wentOff; });
    }

    void itGoesOffOnceItsTimeHasCome()
    {
        m_alarm->setFor(5ms);
        QCOMPARE(m_wentOff, 0);
        now = 5ms;
        QTRY_COMPARE(m_wentOff, 1);
        wake();
        QCOMPARE(m_wentOff, 1);
    }

    void aTimeInThePastIsDueAtOnce()
    {
        now = 1h;
        m_alarm->setFor(5ms);
        QTRY_COMPARE(m_wentOff, 1);
    }

    void itWaitsForWhatIsLeftWhenTheTimerIsEarly()
    {
        coming = {0ms, 3ms, 3ms, 5ms}; // as it is set; as the timer runs out, twice; as it does again
        m_alarm->setFor(5ms);
        QTRY_COMPARE(m_wentOff, 1);
        QCOMPARE(coming.size(), 0);
    }

    void aTimeThatPassedInASleepIsDueAtWaking()
    {
        m_alarm->setFor(10min);
        now = 2h;
        wake();
        QCOMPARE(m_wentOff, 1);
    }

    void aSleepCountsTowardsTheTime()
    {
        m_alarm->setFor(10min);
        now = 10min - 5ms;
        wake();
        QCOMPARE(m_wentOff, 0);
        now = 10min;
        QTRY_COMPARE(m_wentOff, 1);
    }

    void wakingMeansNothingToOneThatIsNotSet()
    {
        now = 2h;
        wake();
        QCOMPARE(m_wentOff, 0);
    }

    void itIsSetForOneTime()
    {
        m_alarm->setFor(1h);
        m_alarm->setFor(2h);
        now = 1h;
        wake();
        QCOMPARE(m_wentOff, 0);
        now = 2h;
        wake();
        QCOMPARE(m_wentOff, 1);
    }

    void itMayBeSetAnewAsItGoesOff()
    {
        m_alarm = MachineAlarm::create([this] {
            ++m_wentOff;
            m_alarm->setFor(now + 1h);
        });
        m_alarm->setFor(1h);
        for (now = 1h; now < 4h; now += 1h)
            wake();
        QCOMPARE(m_wentOff, 3);
    }

    void oneThatIsGoneHearsOfNoWaking()
    {
        m_alarm->setFor(1h);
        m_alarm.reset();
        QVERIFY(listener.expired());
    }

private:
    std::unique_ptr<MachineAlarm> m_alarm;
    int m_wentOff = 0;
};

QTEST_GUILESS_MAIN(MachineAlarmTest)
#include "MachineAlarmTest.moc"
