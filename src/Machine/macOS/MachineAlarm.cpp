// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Machine/MachineAlarm.h"

#include "Machine/MachineTime.h"
#include "Machine/macOS/Waking.h"

#include <QTimer>

#include <algorithm>

namespace {

/// A timer that stands still while the machine sleeps, and is set right when it wakes.
class CorrectedTimer : public MachineAlarm {
public:
    explicit CorrectedTimer(std::function<void()> goOff) : m_goOff(std::move(goOff))
    {
        m_timer.setTimerType(Qt::PreciseTimer);
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { goOffOrWait(); });
    }

    void setFor(std::chrono::nanoseconds elapsed) override
    {
        m_due = elapsed;
        wait();
    }

private:
    void goOffOrWait()
    {
        m_timer.stop();
        if (MachineTime::elapsed() >= m_due)
            m_goOff();
        else
            wait();
    }

    void wait()
    {
        const auto left = std::max(m_due - MachineTime::elapsed(), std::chrono::nanoseconds::zero());
        m_timer.start(std::chrono::ceil<std::chrono::milliseconds>(left));
    }

    const std::function<void()> m_goOff;
    QTimer m_timer;
    std::chrono::nanoseconds m_due{};
    const std::shared_ptr<void> m_waking = onWaking([this] {
        if (m_timer.isActive())
            goOffOrWait();
    });
};

} // namespace

std::unique_ptr<MachineAlarm> MachineAlarm::create(std::function<void()> goOff)
{
    return std::make_unique<CorrectedTimer>(std::move(goOff));
}
