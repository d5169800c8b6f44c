// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Process/TerminationSignals.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <array>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace {

std::array<int, 2> wakeUpPipe{-1, -1}; // stays open until the process is gone: a signal may come that late

// Only calls that are safe in a signal handler stand here.
void wakeUp(int)
{
    const char byte = 0;
    [[maybe_unused]] const auto written = ::write(wakeUpPipe[1], &byte, 1);
}

/// Unlike SIG_IGN it is not inherited by programs that are started, such as the browser.
void passOver(int signal)
{
    struct sigaction action {};
    action.sa_handler = [](int) {};
    action.sa_flags = SA_RESTART;
    sigaction(signal, &action, nullptr);
}

} // namespace

void TerminationSignals::hold()
{
    passOver(SIGPIPE);
    if (::pipe(wakeUpPipe.data()) != 0)
        return; // the signals keep their default, which ends the process too
    for (const int end : wakeUpPipe) {
        ::fcntl(end, F_SETFD, FD_CLOEXEC);
        ::fcntl(end, F_SETFL, O_NONBLOCK); // a full pipe must not stall the handler
    }
    struct sigaction action {};
    action.sa_handler = wakeUp;
    action.sa_flags = SA_RESTART;
    sigaction(SIGTERM, &action, nullptr);
    sigaction(SIGINT, &action, nullptr);
}

void TerminationSignals::onReceived(std::function<void()> end)
{
    if (wakeUpPipe[0] < 0)
        return;
    auto *const notifier = new QSocketNotifier(wakeUpPipe[0], QSocketNotifier::Read, QCoreApplication::instance());
    QObject::connect(notifier, &QSocketNotifier::activated, notifier, [notifier, end = std::move(end)] {
        notifier->setEnabled(false);
        end();
    });
}
