// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Process/TerminationSignals.h"

#include <QCoreApplication>
#include <QSocketNotifier>
#include <QTest>

#include <array>
#include <csignal>
#include <sys/resource.h>

namespace {

auto handlerOf(int signal)
{
    struct sigaction action {};
    ::sigaction(signal, nullptr, &action);
    return action.sa_handler;
}

/// No file can be opened while this lives.
class AllFilesOpen {
public:
    AllFilesOpen()
    {
        ::getrlimit(RLIMIT_NOFILE, &m_before);
        const rlimit none{.rlim_cur = 0, .rlim_max = m_before.rlim_max};
        ::setrlimit(RLIMIT_NOFILE, &none);
    }
    ~AllFilesOpen() { ::setrlimit(RLIMIT_NOFILE, &m_before); }
    Q_DISABLE_COPY_MOVE(AllFilesOpen)

private:
    rlimit m_before{};
};

} // namespace

/// In this order: what is held stays held. Everything else about signals is the end-to-end test's.
class TerminationSignalsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void withoutAPipeTheyAreLeftAlone()
    {
        const std::array before{handlerOf(SIGTERM), handlerOf(SIGINT)}; // the test library's own
        {
            const AllFilesOpen none;
            TerminationSignals::hold();
        }
        TerminationSignals::onReceived([] {});
        QVERIFY(handlerOf(SIGTERM) == before[0]);
        QVERIFY(handlerOf(SIGINT) == before[1]);
        QVERIFY(!QCoreApplication::instance()->findChild<QSocketNotifier *>());
    }

    void eachIsReceivedOnce()
    {
        TerminationSignals::hold();
        int received = 0;
        TerminationSignals::onReceived([&] { ++received; });
        ::raise(SIGTERM);
        ::raise(SIGINT);
        QTRY_COMPARE(received, 1);
        QCoreApplication::processEvents();
        QCOMPARE(received, 1);
    }
};

QTEST_GUILESS_MAIN(TerminationSignalsTest)
#include "TerminationSignalsTest.moc"
