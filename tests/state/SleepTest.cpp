// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "AppStateFixture.h"

#include "Http/HttpSession.h"

#include <QElapsedTimer>

/// The machine falls asleep and wakes, and the network changes.
class SleepTest : public AppStateFixture {
    Q_OBJECT

private Q_SLOTS:
    // When polls come

    void aPollThatFellDueAsleepComesAtWaking_data()
    {
        QTest::addColumn<std::chrono::nanoseconds>("asleep");
        QTest::newRow("seconds beyond it") << std::chrono::nanoseconds(1min + 3s);
        QTest::newRow("a night") << std::chrono::nanoseconds(9h);
        QTest::newRow("days") << std::chrono::nanoseconds(24h * 12);
    }

    void aPollThatFellDueAsleepComesAtWaking()
    {
        QFETCH(const std::chrono::nanoseconds, asleep);
        launchDelivering(100);
        serve(250);
        pass(9min);
        sleep(asleep);
        QCOMPARE(polls(), 2); // once, however many were missed
        QCOMPARE(m_state->menuBarText(), u"250"_s);
    }

    void theFollowingPollsComeEveryTenMinutesAfterIt()
    {
        launchDelivering(100);
        pass(9min);
        sleep(8h + 7min);
        for (int poll = 3; poll < 6; ++poll) {
            pass(10min - 1ns);
            QCOMPARE(polls(), poll - 1);
            pass(1ns);
            QCOMPARE(polls(), poll);
        }
    }

    void aSleepWithinTheTenMinutesMovesNoPoll()
    {
        launchDelivering(100);
        pass(2min);
        sleep(5s);
        sleep(5min);
        QCOMPARE(polls(), 1);
        pass(2min + 55s - 1ns);
        QCOMPARE(polls(), 1);
        pass(1ns);
        QCOMPARE(polls(), 2);
        pass(10min);
        QCOMPARE(polls(), 3);
    }

    void eachOfSeveralSleepsInARowBringsItsPoll()
    {
        launchDelivering(100);
        for (int poll = 2; poll < 6; ++poll) {
            sleep(10h);
            QCOMPARE(polls(), poll);
        }
        sleep(4min);
        sleep(4min);
        QCOMPARE(polls(), 5);
        sleep(4min);
        QCOMPARE(polls(), 6);
    }

    void theTimeOfDaySetAsleepMovesNoPoll()
    {
        launchDelivering(100);
        TestClock::advance(86400);
        sleep(5min);
        QCOMPARE(polls(), 1);
        TestClock::advance(-172800);
        pass(5min);
        QCOMPARE(polls(), 2);
    }

    void aProcessThatWasStoppedPollsOnce()
    {
        launchDelivering(100);
        TestMachine::setOnline(false);
        TestMachine::stop(35min); // awake: a debugger, or a machine that is far too busy
        settle();
        QCOMPARE(polls(), 2);
        pass(10min - 1ns);
        QCOMPARE(polls(), 2);
        pass(1ns);
        QCOMPARE(polls(), 3);
    }

    // The network needs a moment

    void atWakingThePollWaitsUntilTheMachineIsOnline()
    {
        launchDelivering(100);
        TestMachine::setOnline(false);
        sleep(8h);
        pass(25s);
        QCOMPARE(polls(), 1);
        TestMachine::setOnline(true);
        settle();
        QCOMPARE(polls(), 2);
        QVERIFY(!TestMachine::isWaitedFor());
        pass(10min - 1ns);
        QCOMPARE(polls(), 2);
        pass(1ns);
        QCOMPARE(polls(), 3);
    }

    void atWakingThePollWaitsForAMinuteAtMost()
    {
        launchDelivering(100);
        TestMachine::setOnline(false);
        sleep(8h);
        pass(1min - 1ns);
        QCOMPARE(polls(), 1);
        pass(1ns);
        QCOMPARE(polls(), 2);
        QVERIFY(!TestMachine::isWaitedFor());
        TestMachine::setOnline(true);
        settle();
        pass(10min - 1ns);
        QCOMPARE(polls(), 2);
        pass(1ns);
        QCOMPARE(polls(), 3);
    }

    void aMachineThatFallsAsleepAgainGivesItsNetworkAnotherMinute()
    {
        launchDelivering(100);
        TestMachine::setOnline(false);
        sleep(8h);
        pass(50s);
        sleep(8h);
        pass(59s);
        QCOMPARE(polls(), 1);
        TestMachine::setOnline(true);
        settle();
        QCOMPARE(polls(), 2);
        pass(9min);
        QCOMPARE(polls(), 2);
    }

    void nothingElseIsHeldBack()
    {
        TestMachine::setOnline(false);
        launchDelivering(100);
        QCOMPARE(polls(), 1); // the start
        pass(10min);
        QCOMPARE(polls(), 2); // an ordinary tick
        sleep(5min);
        refresh();
        QCOMPARE(polls(), 3);
        QCOMPARE(test(), u"success"_s);
        QCOMPARE(polls(), 5);
        pass(5min);
        QCOMPARE(polls(), 6); // an ordinary tick, though the machine has slept before it
        QVERIFY(!TestMachine::isWaitedFor());
    }

    void aRefreshWhileAPollWaitsGoesOutAtOnce()
    {
        launchDelivering(100);
        TestMachine::setOnline(false);
        sleep(8h);
        refresh();
        QCOMPARE(polls(), 2);
        TestMachine::setOnline(true);
        settle();
        QCOMPARE(polls(), 3);
    }

    void aStateReleasedWhileAPollWaitsPollsNoMore()
    {
        launchDelivering(100);
        TestMachine::setOnline(false);
        sleep(8h);
        QVERIFY(TestMachine::isWaitedFor());
        m_state.reset();
        QVERIFY(!TestMachine::isWaitedFor());
        TestMachine::setOnline(true);
        pass(2min);
        QCOMPARE(polls(), 1);
    }

    // Connections

    void noConnectionOutlivesASleep()
    {
        launchDelivering(100);
        const int connections = m_service->connections();
        refresh();
        QCOMPARE(m_service->connections(), connections);
        sleep(30s);
        refresh();
        QCOMPARE(m_service->connections(), connections + 1);
        refresh();
        QCOMPARE(m_service->connections(), connections + 1);
    }

    void noConnectionOutlivesAChangeOfNetwork()
    {
        launchDelivering(100);
        const int connections = m_service->connections();
        TestMachine::changeNetwork();
        refresh();
        QCOMPARE(m_service->connections(), connections + 1);
        refresh();
        QCOMPARE(m_service->connections(), connections + 1);
    }

    void aConnectionThatDiedAsleepCostsNoWaiting()
    {
        launchDelivering(100);
        m_service->loseConnections();
        serve(250);
        QElapsedTimer time;
        time.start();
        sleep(8h);
        QCOMPARE(m_state->menuBarText(), u"250"_s);
        QVERIFY(time.elapsed() < 5000); // the time-out is 30 s
    }

    void aTransferAmidAChangeOfNetworkGoesOn()
    {
        launchDelivering(100);
        m_service->answerAll(Reply::silence());
        auto poll = m_state->refresh();
        QTRY_COMPARE(polls(), 2);
        TestMachine::changeNetwork();
        auto other = m_state->refresh();
        QTRY_COMPARE(polls(), 3);
        serve(100);
        m_service->breakSilence(Reply::whole(impressions(250)));
        QCoro::waitFor(poll);
        QCoro::waitFor(other);
        QCOMPARE(m_state->menuBarText(), u"250"_s);
        QCOMPARE(polls(), 3); // neither was repeated
    }

    // Requests that are out

    void aRequestThatASleepCutsOffBeginsAnew()
    {
        launchDelivering(100);
        TestDeployment::setTransferTimeout(200ms);
        m_service->answerAll(Reply::silence());
        auto poll = m_state->refresh();
        QTRY_COMPARE(polls(), 2);
        TestMachine::sleep(3min);
        serve(250);
        QCoro::waitFor(poll);
        QCOMPARE(polls(), 3);
        QCOMPARE(m_state->menuBarText(), u"250"_s);
        QVERIFY(!m_state->isLoading());
    }

    void aRequestOutOverNightNeverBringsAnError()
    {
        launchDelivering(100);
        TestDeployment::setTransferTimeout(200ms);
        m_service->answerAll(Reply::silence());
        QStringList labels;
        connect(m_state.get(), &AppState::objectWillChange, this, [&] { labels << m_state->menuBarText(); });
        pass(9min);
        Task::start(m_state->refresh());
        QTRY_COMPARE(polls(), 2);
        m_service->loseConnections();
        serve(250);
        sleep(9h);
        QCOMPARE(m_state->menuBarText(), u"250"_s);
        QVERIFY(!labels.contains(u"ERR"_s));
        QVERIFY(!m_state->isLoading());
    }

    void aRequestThatFailsAwakeIsNotRepeated()
    {
        launchDelivering(100);
        sleep(30s);
        m_service->answerAll(Reply::whole("no JSON"));
        refresh();
        QCOMPARE(polls(), 2);
        QCOMPARE(m_state->menuBarText(), u"ERR"_s);
    }

    void aRequestCutOffAtTheProgramsEndIsNotRepeated()
    {
        launchDelivering(100);
        m_service->answerAll(Reply::silence());
        Task::start(m_state->refresh());
        QTRY_COMPARE(polls(), 2);
        TestMachine::sleep(3min);
        HttpSession::shared().cancelAll();
        QCOMPARE(Task::running(), 0);
        QCOMPARE(polls(), 2);
    }

    // What the user reads

    void theTimeOfTheLastRefreshStaysTrue()
    {
        launchDelivering(100);
        TestMachine::setOnline(false);
        TestClock::advance(8 * 3600);
        sleep(8h);
        QCOMPARE(m_state->lastRefresh()->toMSecsSinceEpoch(), qint64(start) * 1000);
        TestClock::advance(20);
        TestMachine::setOnline(true);
        settle();
        QCOMPARE(m_state->lastRefresh()->toMSecsSinceEpoch(), (qint64(start) + 8 * 3600 + 20) * 1000);
    }

    void aNewDayAfterASleepIsNoChange()
    {
        launchDelivering(5000);
        serve(3); // the account's day has rolled over
        TestClock::advance(10 * 3600);
        sleep(10h);
        QCOMPARE(m_state->today().impressions, 3);
        QCOMPARE(nameOf(m_state->status()), u"stale"_s);
        serve(4);
        TestClock::advance(600);
        pass(10min);
        QCOMPARE(nameOf(m_state->status()), u"ok"_s);
    }

private:
    void launchDelivering(std::int64_t count)
    {
        giveCredentials();
        serve(count);
        launch();
    }
};

QTEST_GUILESS_MAIN(SleepTest)
#include "SleepTest.moc"
