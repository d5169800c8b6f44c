// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Platform/TerminationSignals.h"

#include <QSocketNotifier>

#include <array>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace {

std::array<int, 2> wakeUpPipe{-1, -1};

// Only calls that are safe in a signal handler stand here.
void wakeUp(int)
{
    const char byte = 0;
    [[maybe_unused]] const auto written = ::write(wakeUpPipe[1], &byte, 1);
}

void handle(void (*handler)(int))
{
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    sigaction(SIGTERM, &action, nullptr);
    sigaction(SIGINT, &action, nullptr);
}

} // namespace

TerminationSignals::TerminationSignals()
{
    if (::pipe(wakeUpPipe.data()) != 0)
        return; // the signals keep their default, which ends the process too
    for (const int end : wakeUpPipe)
        ::fcntl(end, F_SETFD, FD_CLOEXEC);
    m_notifier = std::make_unique<QSocketNotifier>(wakeUpPipe[0], QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, [this] {
        m_notifier->setEnabled(false);
        Q_EMIT received();
    });
    handle(wakeUp);
}

TerminationSignals::~TerminationSignals()
{
    if (!m_notifier)
        return;
    handle(SIG_DFL);
    m_notifier.reset();
    for (int &end : wakeUpPipe)
        ::close(std::exchange(end, -1));
}
