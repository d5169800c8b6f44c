// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "AppStateFixture.h"

/// The polls: when they come, what they ask for, how they fail and overlap.
class RefreshTest : public AppStateFixture {
    Q_OBJECT

private Q_SLOTS:
    // Start-up and timer

    void theLabelSaysSetupUntilTheFirstRefreshCompletes()
    {
        giveCredentials();
        m_service->answerAll(Reply::silence());
        m_state = AppState::create();
        QTRY_COMPARE(m_service->requests().size(), 1);
        QVERIFY(m_state->isLoading());
        QCOMPARE(m_state->menuBarText(), u"Setup"_s);
        m_service.reset();
    }

    void startUpRefreshesThenChecksForUpdates()
    {
        giveCredentials();
        serve(5);
        launch();
        QCOMPARE(m_service->requests().size(), 3);
        QVERIFY(m_service->requests().at(0).target.contains("date_preset=today"));
        QVERIFY(m_service->requests().at(1).target.contains("date_preset=last_7d"));
        QCOMPARE(m_service->requests().at(2).target, "/version.json"_ba);
    }

    void withoutCredentialsStartUpOnlyChecksForUpdates()
    {
        launch();
        QCOMPARE(m_service->requests().size(), 1);
        QCOMPARE(m_service->requests().at(0).target, "/version.json"_ba);
        QCOMPARE(nameOf(m_state->status()), u"noConfig"_s);
    }

    void theTimerPollsWithoutCheckingForUpdates()
    {
        giveCredentials();
        serve(5);
        launch();
        for (int poll = 2; poll <= 4; ++poll) {
            pass(10min);
            QCOMPARE(polls(), poll);
        }
        QCOMPARE(m_service->requestsWith("date_preset=last_7d"), 4);
        QCOMPARE(m_service->requestsWith("version.json"), 1);
    }

    void theTimerIsArmedBeforeAnythingIsFetched()
    {
        giveCredentials();
        m_service->answerAll(Reply::silence());
        TestDeployment::setTransferTimeout(50ms);
        m_state = AppState::create();
        TestMachine::pass(4min); // before its first turn
        settle();
        pass(6min);
        QCOMPARE(polls(), 2);
    }

    void theTimerGoesOnAfterAFailure()
    {
        giveCredentials();
        m_service->answerAll(Reply::whole("no JSON", 500));
        launch();
        pass(10min);
        QCOMPARE(polls(), 2);
        serve(12);
        pass(10min);
        QCOMPARE(nameOf(m_state->status()), u"ok"_s);
    }

    void thePollsKeepTheirTime()
    {
        giveCredentials();
        serve(5);
        launch();
        for (int poll = 2; poll <= 4; ++poll) {
            pass(10min - 1ns);
            QCOMPARE(polls(), poll - 1);
            pass(1ns);
            QCOMPARE(polls(), poll);
        }
    }

    void littleDelaysDoNotAddUp()
    {
        giveCredentials();
        serve(5);
        launch();
        for (int poll = 2; poll <= 6; ++poll) {
            TestMachine::stop(10min + (poll == 2 ? 50ms : 0ms));
            settle();
            QCOMPARE(polls(), poll);
        }
        pass(10min - 50ms - 1ns);
        QCOMPARE(polls(), 6);
        pass(1ns);
        QCOMPARE(polls(), 7);
    }

    void aRefreshInBetweenMovesNoPoll()
    {
        giveCredentials();
        serve(5);
        launch();
        pass(7min);
        refresh();
        QCOMPARE(polls(), 2);
        pass(3min - 1ns);
        QCOMPARE(polls(), 2);
        pass(1ns);
        QCOMPARE(polls(), 3);
    }

    void theTimeOfDayMovesNoPoll()
    {
        giveCredentials();
        serve(5);
        launch();
        TestClock::advance(7200);
        pass(9min);
        TestClock::advance(-14400);
        QCOMPARE(polls(), 1);
        pass(1min);
        QCOMPARE(polls(), 2);
    }

    void aReleasedStatePollsNoMore()
    {
        giveCredentials();
        serve(5);
        launch();
        m_state.reset();
        pass(30min);
        QCOMPARE(polls(), 1);
    }

    void aStateReleasedBeforeItsFirstTurnDoesNothing()
    {
        giveCredentials();
        m_state = AppState::create();
        m_state.reset();
        QCoreApplication::processEvents();
        QCOMPARE(Task::running(), 0);
        QCOMPARE(m_service->requests().size(), 0);
    }

    // Requests of a refresh

    void theAccountIdIsGivenItsPrefix_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QByteArray>("requested");
        QTest::newRow("number alone") << u"123456789"_s << "/v21.0/act_123456789/insights"_ba;
        QTest::newRow("with prefix") << u"act_123456789"_s << "/v21.0/act_123456789/insights"_ba;
        QTest::newRow("capitals are no prefix") << u"ACT_123"_s << "/v21.0/act_ACT_123/insights"_ba;
        QTest::newRow("prefix alone") << u"act_"_s << "/v21.0/act_/insights"_ba;
    }

    void theAccountIdIsGivenItsPrefix()
    {
        QFETCH(const QString, typed);
        QFETCH(const QByteArray, requested);
        giveCredentials(typed);
        serve(5);
        launch();
        QVERIFY(m_service->requests().at(0).target.startsWith(requested));
        QVERIFY(m_service->requests().at(1).target.startsWith(requested));
        QCOMPARE(m_preferences->stored(u"adAccountId"_s).toString(), typed);
    }

    void credentialsWrittenByAnotherProgramAreUsedByTheNextRefresh()
    {
        launch();
        serve(5);
        giveCredentials(u"77"_s);
        refresh();
        QCOMPARE(m_service->requestsWith("act_77/"), 2);
        QCOMPARE(m_state->menuBarText(), u"5"_s);
    }

    void theTokenIsReadAgainForTheSecondRequestAndTheAccountIsNot()
    {
        giveCredentials(u"1"_s);
        m_service->answer([this](const LoopbackService::Request &request) {
            if (request.target.contains("date_preset=today")) {
                m_preferences->write(u"accessToken"_s, u"NEW"_s);
                m_preferences->write(u"adAccountId"_s, u"2"_s);
            }
            return Reply::whole("{}");
        });
        launch();
        QVERIFY(m_service->requests().at(1).target.contains("act_1/"));
        QVERIFY(m_service->requests().at(1).target.endsWith("access_token=NEW"));
    }

    // Failures

    void aFailureKeepsTheFiguresAndTheMemory()
    {
        launchWith(90, 80, start - 600);
        const auto refreshed = m_state->lastRefresh();
        m_service->answerAll(Reply::whole(json("{'error': {'message': 'Token expired'}}"), 400));
        TestClock::advance(60);
        refresh();
        QCOMPARE(nameOf(m_state->status()), u"error: Token expired"_s);
        QCOMPARE(m_state->menuBarText(), u"ERR"_s);
        QCOMPARE(m_state->today().impressions, 90);
        QCOMPARE(m_state->lastRefresh(), refreshed);
        QCOMPARE(lastImpressions(), 90);
        QCOMPARE(changeTime(), start);
        QVERIFY(!m_state->isLoading());
    }

    void afterAFailureTheSevenDaysAreNotAskedFor()
    {
        giveCredentials();
        m_service->answerAll(Reply::whole("no JSON"));
        launch();
        QCOMPARE(m_service->requestsWith("last_7d"), 0);
    }

    void anEmptyErrorMessageIsStillAnError()
    {
        giveCredentials();
        m_service->answerAll(Reply::whole(json("{'error': {'message': ''}}")));
        launch();
        QCOMPARE(nameOf(m_state->status()), u"error: "_s);
        QCOMPARE(m_state->menuBarText(), u"ERR"_s);
    }

    void aFailureOfTheSevenDaysIsNeverShown()
    {
        giveCredentials();
        m_service->answerInsights(impressions(5), json("{'data': [{'impressions': '70'}]}"));
        launch();
        QCOMPARE(m_state->sevenDay().impressions, 70);
        m_service->answerInsights(impressions(6), json("{'error': {'message': 'no'}}"));
        refresh();
        QCOMPARE(nameOf(m_state->status()), u"ok"_s);
        QCOMPARE(m_state->today().impressions, 6);
        QCOMPARE(m_state->sevenDay().impressions, 70);
        QVERIFY(!m_state->isLoading());
    }

    void credentialsTakenAwayLeaveTheFigures()
    {
        launchWith(90, 80, start - 600);
        m_service->answerInsights(impressions(90), json("{'data': [{'impressions': '700'}]}"));
        TestClock::advance(60);
        refresh();
        const auto refreshed = m_state->lastRefresh();
        m_state->setAccessToken(QString());
        const qsizetype requests = m_service->requests().size();
        TestClock::advance(60);
        refresh();
        QCOMPARE(nameOf(m_state->status()), u"noConfig"_s);
        QCOMPARE(m_state->today().impressions, 90);
        QCOMPARE(m_state->sevenDay().impressions, 700);
        QVERIFY(refreshed && m_state->lastRefresh() == refreshed);
        QCOMPARE(lastImpressions(), 90);
        QCOMPARE(changeTime(), start);
        QVERIFY(!m_state->isLoading());
        QCOMPARE(m_service->requests().size(), requests);
    }

    // Overlaps

    void overlappingRefreshesRunSideBySide()
    {
        giveCredentials();
        serve(5);
        launch();
        m_service->answerAll(Reply::silence());
        Task::start(m_state->refresh());
        Task::start(m_state->refresh());
        QTRY_COMPARE(m_service->requestsWith("date_preset=today"), 3); // none waits for another one's answer
    }

    void overlappingRefreshesBothFetchEverything()
    {
        giveCredentials();
        serve(5);
        launch();
        auto first = m_state->refresh();
        auto second = m_state->refresh();
        QVERIFY(m_state->isLoading());
        QCoro::waitFor(first);
        QCoro::waitFor(second);
        QVERIFY(!m_state->isLoading());
        QCOMPARE(m_service->requestsWith("date_preset=today"), 3);
        QCOMPARE(m_service->requestsWith("date_preset=last_7d"), 3);
    }

    void twoHundredRefreshesAllEnd()
    {
        giveCredentials();
        serve(5);
        launch();
        for (int i = 0; i < 200; ++i)
            Task::start(m_state->refresh());
        QTRY_COMPARE_WITH_TIMEOUT(Task::running(), 0, 20'000);
        QCOMPARE(m_service->requestsWith("date_preset=today"), 201);
        QVERIFY(!m_state->isLoading());
        QCOMPARE(nameOf(m_state->status()), u"ok"_s);
    }

    void aStateReleasedDuringARefreshLivesUntilItEnds()
    {
        giveCredentials();
        serve(5);
        launch();
        const std::weak_ptr<AppState> weak = m_state;
        m_service->answerAll(Reply::silence());
        TestDeployment::setTransferTimeout(50ms);
        Task::start(m_state->refresh());
        m_state.reset();
        QVERIFY(!weak.expired());
        QTRY_VERIFY(weak.expired());
    }
};

QTEST_GUILESS_MAIN(RefreshTest)
#include "RefreshTest.moc"
