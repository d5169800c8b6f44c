// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Machine/MachineAlarm.h"
#include "Machine/OnlineWatch.h"

#include <QObject>

/// Ticks at every interval of real time, the time asleep included, whatever the time of day is set to.
///
/// A tick that falls due while the machine sleeps comes after waking, once, however many were missed: as soon as the
/// machine is online, or after a minute in any case. No other tick waits. The ticks that follow a late one come at
/// every interval after it.
class PollTimer : public QObject {
    Q_OBJECT

public:
    explicit PollTimer(std::chrono::milliseconds interval);

Q_SIGNALS:
    void timeout();

private:
    void setAlarm(std::chrono::nanoseconds time);
    void goOff();
    void waitForNetwork();
    void tick();

    const std::chrono::nanoseconds m_interval;
    const std::unique_ptr<MachineAlarm> m_alarm;
    std::chrono::nanoseconds m_due{};       ///< when the alarm goes off, in MachineTime::elapsed()
    std::chrono::nanoseconds m_asleep{};    ///< MachineTime::asleep() when it was set
    std::unique_ptr<OnlineWatch> m_network; ///< while a tick waits for it
};
