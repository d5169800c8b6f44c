// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "TestMachine.h"

#include "Machine/LocalNetwork.h"
#include "Machine/MachineAlarm.h"
#include "Machine/OnlineWatch.h"

#include <QList>

#include <algorithm>
#include <optional>
#include <utility>

namespace {

using Time = std::chrono::nanoseconds;

Time elapsedTime = std::chrono::hours(1);
Time timeAsleep = std::chrono::minutes(20);
bool machineIsOnline = true;
QByteArray network = "home";

class TestAlarm;
QList<TestAlarm *> alarms;

class TestAlarm : public MachineAlarm {
public:
    explicit TestAlarm(std::function<void()> goOff) : m_goOff(std::move(goOff)) { alarms << this; }
    ~TestAlarm() override { alarms.removeAll(this); }
    Q_DISABLE_COPY_MOVE(TestAlarm)

    void setFor(Time elapsed) override { m_due = elapsed; }
    std::optional<Time> due() const { return m_due; }
    void goOff()
    {
        m_due.reset();
        m_goOff();
    }

private:
    const std::function<void()> m_goOff;
    std::optional<Time> m_due;
};

class TestOnlineWatch;
QList<TestOnlineWatch *> onlineWatches;

class TestOnlineWatch : public OnlineWatch {
public:
    TestOnlineWatch()
    {
        onlineWatches << this;
        QMetaObject::invokeMethod(this, &TestOnlineWatch::tell, Qt::QueuedConnection);
    }
    ~TestOnlineWatch() override { onlineWatches.removeAll(this); }
    Q_DISABLE_COPY_MOVE(TestOnlineWatch)

    void tell()
    {
        if (machineIsOnline)
            Q_EMIT online();
    }
};

/// The one that goes off first, if any is due by then.
TestAlarm *firstDue(Time end)
{
    const auto sooner = [](const TestAlarm *one, const TestAlarm *other) {
        return one->due().value_or(Time::max()) < other->due().value_or(Time::max());
    };
    const auto first = std::min_element(alarms.begin(), alarms.end(), sooner);
    return first != alarms.end() && (*first)->due().value_or(Time::max()) <= end ? *first : nullptr;
}

} // namespace

Time MachineTime::elapsed() { return elapsedTime; }

Time MachineTime::asleep() { return timeAsleep; }

std::unique_ptr<MachineAlarm> MachineAlarm::create(std::function<void()> goOff)
{
    return std::make_unique<TestAlarm>(std::move(goOff));
}

std::unique_ptr<OnlineWatch> OnlineWatch::create() { return std::make_unique<TestOnlineWatch>(); }

QByteArray localNetwork() { return network; }

void TestMachine::pass(Time time)
{
    const Time end = elapsedTime + time;
    while (TestAlarm *const alarm = firstDue(end)) {
        elapsedTime = std::max(elapsedTime, *alarm->due());
        alarm->goOff();
    }
    elapsedTime = end;
}

void TestMachine::sleep(Time time)
{
    elapsedTime += time;
    timeAsleep += time;
    pass(Time::zero());
}

void TestMachine::setOnline(bool online)
{
    machineIsOnline = online;
    for (TestOnlineWatch *const watch : std::as_const(onlineWatches))
        watch->tell();
}

void TestMachine::stop(Time time)
{
    elapsedTime += time;
    pass(Time::zero());
}

bool TestMachine::isOnline() { return machineIsOnline; }

bool TestMachine::isWaitedFor() { return !onlineWatches.isEmpty(); }

void TestMachine::changeNetwork() { network += '+'; }
