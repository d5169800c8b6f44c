// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "AppStateFixture.h"

namespace {

// Spelled out: what a default is must not decide what it is compared with.
constexpr TodayStats noImpressions{.impressions = 0, .spend = 0.0, .linkClicks = 0, .cpc = 0.0};
constexpr SevenDayStats emptyWeek{
    .spend = 0.0, .impressions = 0, .frequency = 0.0, .reach = 0, .cpc = 0.0, .ctr = 0.0, .conversions = 0};

} // namespace

/// What the state is at first, what it publishes, and the connection test.
class AppStateTest : public AppStateFixture {
    Q_OBJECT

private Q_SLOTS:
    // What a fresh state is

    void aFreshStateHasNothingToShow()
    {
        m_state = AppState::create();
        QCOMPARE(nameOf(m_state->status()), u"noConfig"_s);
        QVERIFY(m_state->today() == noImpressions);
        QVERIFY(m_state->sevenDay() == emptyWeek);
        QVERIFY(!m_state->isLoading());
        QVERIFY(!m_state->lastRefresh());
        QCOMPARE(m_state->menuBarText(), u"Setup"_s);
    }

    void preferencesHaveTheirDefaults()
    {
        m_state = AppState::create();
        QCOMPARE(m_state->accessToken(), QString());
        QCOMPARE(m_state->adAccountId(), QString());
        QCOMPARE(m_state->staleThresholdMinutes(), 15);
    }

    void preferencesAreStoredUnderTheirNames()
    {
        launch();
        m_state->setAccessToken(u" tok en "_s);
        m_state->setAdAccountId(u"ACT_1"_s);
        m_state->setStaleThresholdMinutes(-5);
        QCOMPARE(m_preferences->stored(u"accessToken"_s).toString(), u" tok en "_s);
        QCOMPARE(m_preferences->stored(u"adAccountId"_s).toString(), u"ACT_1"_s);
        QCOMPARE(m_preferences->stored(u"staleThresholdMinutes"_s).toString(), u"-5"_s);
    }

    void launchAtLoginIsLeftAsItIs_data()
    {
        QTest::addColumn<QVariant>("before");
        QTest::newRow("absent") << QVariant();
        QTest::newRow("on") << QVariant(u"true"_s);
        QTest::newRow("of another kind") << QVariant(u"at noon"_s);
    }

    void launchAtLoginIsLeftAsItIs()
    {
        QFETCH(const QVariant, before);
        if (before.isValid())
            m_preferences->write(u"launchAtLogin"_s, before);
        giveCredentials();
        launch();
        m_state->setAdAccountId(u"2"_s);
        refresh();
        QCOMPARE(m_preferences->stored(u"launchAtLogin"_s), before);
    }

    void credentialsAreNotTrimmed_data()
    {
        QTest::addColumn<QString>("token");
        QTest::addColumn<QString>("accountId");
        QTest::addColumn<bool>("present");
        QTest::newRow("both empty") << u""_s << u""_s << false;
        QTest::newRow("token only") << u"T"_s << u""_s << false;
        QTest::newRow("account only") << u""_s << u"1"_s << false;
        QTest::newRow("a blank counts") << u" "_s << u"1"_s << true;
        QTest::newRow("two blanks count") << u" "_s << u" "_s << true;
    }

    void credentialsAreNotTrimmed()
    {
        QFETCH(const QString, token);
        QFETCH(const QString, accountId);
        launch();
        m_state->setAccessToken(token);
        m_state->setAdAccountId(accountId);
        QTEST(m_state->hasCredentials(), "present");
    }

    void blanksAroundAnAccountIdAreNotCutOff_data()
    {
        QTest::addColumn<QString>("accountId");
        QTest::newRow("before") << u" 42"_s;
        QTest::newRow("behind") << u"42 "_s;
        QTest::newRow("a line break") << u"act_42\n"_s;
    }

    void blanksAroundAnAccountIdAreNotCutOff()
    {
        QFETCH(const QString, accountId);
        giveCredentials(accountId);
        serve(5);
        launch();
        QCOMPARE(nameOf(m_state->status()), u"error: Invalid API URL"_s);
        QCOMPARE(m_service->requestsWith("insights"), 0);
    }

    // Published changes

    void everyChangeIsAnnouncedBeforeItHappens()
    {
        launchWith(90, 80, start - 600);
        serve(95);
        QStringList seen;
        connect(m_state.get(), &AppState::objectWillChange, this, [&] {
            seen << u"%1 %2 %3"_s.arg(m_state->isLoading()).arg(m_state->today().impressions).arg(lastImpressions());
        });
        refresh();
        QCOMPARE(seen.first(), u"0 90 90"_s); // before the loading flag rose
        QVERIFY(seen.contains(u"1 90 95"_s)); // before today's figures
        QCOMPARE(seen.last(), u"1 95 95"_s);  // before the loading flag fell
    }

    void anEditOfAPreferenceIsAnnounced()
    {
        launch();
        const QSignalSpy changes(m_state.get(), &AppState::objectWillChange);
        m_state->setAccessToken(u"T"_s);
        QCOMPARE(changes.size(), 1);
    }

    void aRefreshWithoutCredentialsAnnouncesItsStatusAlone()
    {
        launchWith(90, 80, start - 600);
        m_state->setAccessToken({});
        const QSignalSpy changes(m_state.get(), &AppState::objectWillChange);
        refresh();
        QCOMPARE(changes.size(), 1);
        QCOMPARE(nameOf(m_state->status()), u"noConfig"_s);
    }

    void aRefreshWithoutCredentialsLeavesAnotherOneLoading()
    {
        launchWith(90, 80, start - 600);
        m_service->answerAll(Reply::silence());
        Task::start(m_state->refresh());
        m_state->setAccessToken({});
        refresh();
        QVERIFY(m_state->isLoading());
    }

    void theTimeOfTheLastRefreshIsTheClocks()
    {
        launchWith(90, 80, start - 600);
        QCOMPARE(m_state->lastRefresh()->toSecsSinceEpoch(), static_cast<qint64>(start));
    }

    // The connection test

    void aTestWithoutCredentialsAsksForBothFields()
    {
        launch();
        const qsizetype requests = m_service->requests().size();
        QCOMPARE(test(), u"Please enter both fields"_s);
        QCOMPARE(m_service->requests().size(), requests);
    }

    void aFailedTestTouchesNothing()
    {
        launchWith(90, 80, start - 600);
        m_service->answerAll(Reply::whole(json("{'error': {'message': 'Invalid token'}}"), 400));
        const QSignalSpy changes(m_state.get(), &AppState::objectWillChange);
        QCOMPARE(test(), u"Invalid token"_s);
        QCOMPARE(nameOf(m_state->status()), u"ok"_s);
        QCOMPARE(changes.size(), 0);
    }

    void aSuccessfulTestRefreshes()
    {
        launch();
        serve(5);
        giveCredentials(u"9"_s);
        const qsizetype before = m_service->requests().size();
        QCOMPARE(test(), u"success"_s);
        QCOMPARE(m_service->requests().size() - before, 3);
        QCOMPARE(m_service->requestsWith("act_9/insights"), 3);
        QCOMPARE(m_service->requestsWith("date_preset=today"), 2);
        QCOMPARE(m_state->menuBarText(), u"5"_s);
    }

    void aTestSucceedsWhateverComesOfItsRefresh()
    {
        launch();
        giveCredentials(u"9"_s);
        m_service->answer([this](const LoopbackService::Request &) {
            return m_service->requestsWith("act_9/insights") == 1 ? Reply::whole(impressions(5))
                                                                  : Reply::whole(json("{'error': {'message': 'no'}}"));
        });
        QCOMPARE(test(), u"success"_s);
        QCOMPARE(nameOf(m_state->status()), u"error: no"_s);
    }

    // What the user's title says

    void theTitleGroupsThousands()
    {
        launchWith(1'234'567, 0, 0.0);
        QCOMPARE(m_state->menuBarText(), u"1,234,567"_s);
    }
};

QTEST_GUILESS_MAIN(AppStateTest)
#include "AppStateTest.moc"
