// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Machine/PollTimer.h"

#include "Machine/MachineTime.h"

using namespace std::chrono_literals;

namespace {

constexpr auto patience = 1min; // with a network that does not come back

} // namespace

PollTimer::PollTimer(std::chrono::milliseconds interval)
    : m_interval(interval), m_alarm(MachineAlarm::create([this] { goOff(); }))
{
    setAlarm(MachineTime::elapsed() + m_interval);
}

void PollTimer::setAlarm(std::chrono::nanoseconds time)
{
    m_due = time;
    m_asleep = MachineTime::asleep();
    m_alarm->setFor(time);
}

void PollTimer::goOff()
{
    // Nobody tells when the machine woke. But a tick that it has slept over is as late as the rest of it takes to wake.
    const bool late = MachineTime::elapsed() - m_due >= MachineTime::briefestSleep;
    if (late && MachineTime::hasSleptSince(m_asleep))
        waitForNetwork(); // once more where the machine fell asleep while a tick was waiting
    else
        tick();
}

void PollTimer::waitForNetwork()
{
    setAlarm(MachineTime::elapsed() + patience);
    m_network = OnlineWatch::create();
    // Queued, because a tick takes the watch away.
    connect(
        m_network.get(), &OnlineWatch::online, this,
        [this] {
            if (m_network)
                tick();
        },
        Qt::QueuedConnection);
}

void PollTimer::tick()
{
    const auto now = MachineTime::elapsed();
    const bool late = m_network || now - m_due >= MachineTime::briefestSleep;
    m_network.reset();
    setAlarm((late ? now : m_due) + m_interval); // an ordinary tick keeps to the beat, so that delays do not add up
    Q_EMIT timeout();
}
