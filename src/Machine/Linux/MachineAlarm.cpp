// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Machine/MachineAlarm.h"

#include <QSocketNotifier>

#include <cstdint>
#include <sys/timerfd.h>
#include <unistd.h>
#include <utility>

namespace {

/// A timer of the kernel's that counts the time asleep, too.
class TimerDescriptor : public MachineAlarm {
public:
    explicit TimerDescriptor(std::function<void()> goOff) : m_goOff(std::move(goOff))
    {
        if (m_descriptor < 0)
            qFatal("Vantelo: The system gives no timer."); // better no program than figures that are never renewed
        QObject::connect(&m_notifier, &QSocketNotifier::activated, &m_notifier, [this] { expire(); });
    }

    ~TimerDescriptor() override
    {
        m_notifier.setEnabled(false);
        ::close(m_descriptor);
    }

    Q_DISABLE_COPY_MOVE(TimerDescriptor)

    void setFor(std::chrono::nanoseconds elapsed) override
    {
        const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(elapsed);
        itimerspec once{};
        once.it_value.tv_sec = seconds.count();
        once.it_value.tv_nsec = (elapsed - seconds).count();
        ::timerfd_settime(m_descriptor, TFD_TIMER_ABSTIME, &once, nullptr);
    }

private:
    void expire()
    {
        std::uint64_t times = 0;
        if (::read(m_descriptor, &times, sizeof times) == sizeof times) // otherwise it was set anew meanwhile
            m_goOff();
    }

    const std::function<void()> m_goOff;
    // Not the clock's _ALARM, which would wake the machine.
    const int m_descriptor = ::timerfd_create(CLOCK_BOOTTIME, TFD_NONBLOCK | TFD_CLOEXEC);
    QSocketNotifier m_notifier{m_descriptor, QSocketNotifier::Read};
};

} // namespace

std::unique_ptr<MachineAlarm> MachineAlarm::create(std::function<void()> goOff)
{
    return std::make_unique<TimerDescriptor>(std::move(goOff));
}
