// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "App/AppState.h"
#include "Json.h"
#include "LoopbackService.h"
#include "Platform/Task.h"
#include "TestClock.h"
#include "TestDeployment.h"
#include "TestPreferences.h"

#include <QCoroTask>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using Reply = LoopbackService::Reply;

namespace {

constexpr double start = 1'700'000'000.0;

QByteArray impressions(std::int64_t count)
{
    return json("{'data': [{'impressions': '") + QByteArray::number(qlonglong{count}) + json("'}]}");
}

QString nameOf(const MonitorStatus &status)
{
    return status.match([](const MonitorStatus::Error &error) { return u"error: "_s + error.message; },
        [](MonitorStatus::Ok) { return u"ok"_s; }, [](MonitorStatus::Stale) { return u"stale"_s; },
        [](MonitorStatus::NoConfig) { return u"noConfig"_s; });
}

} // namespace

class AppStateTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestClock::set(start);
        m_preferences = std::make_unique<TestPreferences>();
        m_service = std::make_unique<LoopbackService>();
    }

    void cleanup()
    {
        m_state.reset();
        m_service.reset();
        QTRY_COMPARE(Task::running(), 0);
        m_preferences.reset();
        TestDeployment::setPollInterval(24h);
        TestDeployment::setTransferTimeout(30s);
    }

    // What a fresh state is

    void aFreshStateHasNothingToShow()
    {
        m_state = AppState::create();
        QCOMPARE(nameOf(m_state->status()), u"noConfig"_s);
        QVERIFY(m_state->today() == TodayStats());
        QVERIFY(m_state->sevenDay() == SevenDayStats());
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

    void launchAtLoginIsNeitherReadNorWritten()
    {
        giveCredentials();
        launch();
        QVERIFY(!m_preferences->stored(u"launchAtLogin"_s).isValid());
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
        TestDeployment::setPollInterval(20ms);
        m_state = AppState::create();
        QTRY_VERIFY(m_service->requestsWith("date_preset=today") >= 4);
        QCOMPARE(m_service->requestsWith("version.json"), 1);
    }

    void theTimerGoesOnAfterAFailure()
    {
        giveCredentials();
        m_service->answerAll(Reply::whole("no JSON", 500));
        TestDeployment::setPollInterval(20ms);
        m_state = AppState::create();
        QTRY_VERIFY(m_service->requestsWith("date_preset=today") >= 3);
        serve(12);
        QTRY_COMPARE(nameOf(m_state->status()), u"ok"_s);
    }

    void aReleasedStatePollsNoMore()
    {
        giveCredentials();
        serve(5);
        TestDeployment::setPollInterval(20ms);
        m_state = AppState::create();
        QTRY_VERIFY(m_service->requestsWith("date_preset=today") >= 2);
        m_state.reset();
        QTRY_COMPARE(Task::running(), 0);
        const qsizetype requests = m_service->requests().size();
        QTest::qWait(100); // five ticks that must not come
        QCOMPARE(m_service->requests().size(), requests);
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

    // The staleness rule

    void theFirstFetchSeedsTheChangeTimeEvenAtZero()
    {
        giveCredentials();
        serve(0);
        launch();
        QCOMPARE(nameOf(m_state->status()), u"ok"_s);
        QCOMPARE(changeTime(), start);
        QCOMPARE(lastImpressions(), 0);
        QCOMPARE(m_state->menuBarText(), u"0"_s);
    }

    void aRiseResetsTheChangeTime()
    {
        launchWith(100, 90, start - 600);
        QCOMPARE(changeTime(), start);
        QCOMPARE(lastImpressions(), 100);
        QCOMPARE(nameOf(m_state->status()), u"ok"_s);
    }

    void anUnchangedCountKeepsTheChangeTime()
    {
        launchWith(90, 90, start - 600);
        QCOMPARE(changeTime(), start - 600);
        QCOMPARE(nameOf(m_state->status()), u"ok"_s);
    }

    void aFallingCountKeepsTheChangeTime()
    {
        launchWith(12, 900, start - 600);
        QCOMPARE(changeTime(), start - 600);
        QCOMPARE(lastImpressions(), 12);
        QCOMPARE(nameOf(m_state->status()), u"ok"_s);
    }

    void theFirstRiseOfANewDayIsAChange()
    {
        launchWith(12, 900, start - 3600);
        QCOMPARE(nameOf(m_state->status()), u"stale"_s);
        serve(13);
        TestClock::advance(600);
        refresh();
        QCOMPARE(nameOf(m_state->status()), u"ok"_s);
        QCOMPARE(changeTime(), start + 600);
    }

    void exactlyTheThresholdIsStillOk()
    {
        launchWith(90, 90, start - 15 * 60);
        QCOMPARE(nameOf(m_state->status()), u"ok"_s);
    }

    void anyTimeBeyondTheThresholdIsStale()
    {
        launchWith(90, 90, start - 15 * 60 - 0.001);
        QCOMPARE(nameOf(m_state->status()), u"stale"_s);
        QCOMPARE(m_state->menuBarText(), u"90"_s);
    }

    void theStaleStateSurvivesARelaunch()
    {
        launchWith(90, 90, start - 600);
        m_state.reset();
        TestClock::advance(301);
        launch();
        QCOMPARE(nameOf(m_state->status()), u"stale"_s);
    }

    void aThresholdIsUsedAsStored_data()
    {
        QTest::addColumn<int>("threshold");
        QTest::addColumn<double>("age");
        QTest::addColumn<QString>("status");
        QTest::newRow("one, at one minute") << 1 << 60.0 << u"ok"_s;
        QTest::newRow("one, beyond") << 1 << 60.5 << u"stale"_s;
        QTest::newRow("zero") << 0 << 0.25 << u"stale"_s;
        QTest::newRow("negative") << -5 << 0.0 << u"stale"_s;
        QTest::newRow("very long") << 1'000'000 << 59'999'999.0 << u"ok"_s;
    }

    void aThresholdIsUsedAsStored()
    {
        QFETCH(const int, threshold);
        QFETCH(const double, age);
        m_preferences->write(u"staleThresholdMinutes"_s, threshold);
        launchWith(90, 90, start - age);
        QTEST(nameOf(m_state->status()), "status");
    }

    void aChangeTimeThatIsNotPositiveIsOk()
    {
        launchWith(90, 90, -5.0);
        QCOMPARE(nameOf(m_state->status()), u"ok"_s);
        QCOMPARE(changeTime(), -5.0);
    }

    void theDifferenceOfTwoCountsDoesNotWrap()
    {
        launchWith(std::numeric_limits<std::int64_t>::max(), std::numeric_limits<std::int64_t>::min(), start - 9999);
        QCOMPARE(changeTime(), start);
        launchWith(std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::int64_t>::max(), start - 600);
        QCOMPARE(changeTime(), start - 600);
    }

    void anotherAccountIsComparedWithTheOldOnesCount()
    {
        launchWith(90, 90, start - 600);
        m_state->setAdAccountId(u"2"_s);
        QCOMPARE(lastImpressions(), 90);
        serve(50);
        refresh();
        QCOMPARE(changeTime(), start - 600);
        QCOMPARE(lastImpressions(), 50);
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
        m_state->setAccessToken(QString());
        const qsizetype requests = m_service->requests().size();
        refresh();
        QCOMPARE(nameOf(m_state->status()), u"noConfig"_s);
        QCOMPARE(m_state->today().impressions, 90);
        QVERIFY(m_state->lastRefresh());
        QCOMPARE(m_service->requests().size(), requests);
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

    void theTimeOfTheLastRefreshIsTheClocks()
    {
        launchWith(90, 80, start - 600);
        QCOMPARE(m_state->lastRefresh()->toSecsSinceEpoch(), static_cast<qint64>(start));
    }

    // Overlaps

    void overlappingRefreshesRunSideBySide()
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

    // What the user's title says

    void theTitleGroupsThousands()
    {
        launchWith(1'234'567, 0, 0.0);
        QCOMPARE(m_state->menuBarText(), u"1,234,567"_s);
    }

private:
    void giveCredentials(const QString &accountId = u"act_1"_s)
    {
        m_preferences->write(u"accessToken"_s, u"T"_s);
        m_preferences->write(u"adAccountId"_s, accountId);
    }

    void serve(std::int64_t count) { m_service->answerInsights(impressions(count), "{}"); }

    /// Creates the state and waits for its start-up to end.
    void launch()
    {
        m_state = AppState::create();
        QCoreApplication::processEvents();
        QTRY_COMPARE(Task::running(), 0);
    }

    /// Launches with a memory of an earlier run while the service reports this count.
    void launchWith(std::int64_t count, std::int64_t remembered, double changed)
    {
        giveCredentials();
        m_preferences->write(u"lastImpressions"_s, qlonglong{remembered});
        m_preferences->write(u"lastChangeTimestamp"_s, changed);
        serve(count);
        launch();
    }

    void refresh() { QCoro::waitFor(m_state->refresh()); }
    QString test() { return QCoro::waitFor(m_state->testConnection()).value_or(u"success"_s); }

    double changeTime() const { return m_preferences->stored(u"lastChangeTimestamp"_s).toDouble(); }
    std::int64_t lastImpressions() const { return m_preferences->stored(u"lastImpressions"_s).toLongLong(); }

    std::unique_ptr<TestPreferences> m_preferences;
    std::unique_ptr<LoopbackService> m_service;
    std::shared_ptr<AppState> m_state;
};

QTEST_GUILESS_MAIN(AppStateTest)
#include "AppStateTest.moc"
