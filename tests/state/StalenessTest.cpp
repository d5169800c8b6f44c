// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "AppStateFixture.h"

/// When an account counts as stale.
class StalenessTest : public AppStateFixture {
    Q_OBJECT

private Q_SLOTS:
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

    void aThresholdOfZeroIsOverAMomentAfterTheRise()
    {
        m_preferences->write(u"staleThresholdMinutes"_s, 0);
        launchWith(90, 90, start - 600);
        serve(91);
        connect(m_state.get(), &AppState::objectWillChange, this, [] { TestClock::advance(0.001); });
        refresh();
        QVERIFY(changeTime() > start);
        QCOMPARE(nameOf(m_state->status()), u"stale"_s);
    }

    void aChangeTimeIsKnownFromTheFirstMomentOf1970On_data()
    {
        QTest::addColumn<double>("changed");
        QTest::addColumn<QString>("status");
        QTest::newRow("long before") << -5.0 << u"ok"_s;
        QTest::newRow("just before") << -0.5 << u"ok"_s;
        QTest::newRow("just after") << 0.5 << u"stale"_s;
    }

    void aChangeTimeIsKnownFromTheFirstMomentOf1970On()
    {
        QFETCH(const double, changed);
        launchWith(90, 90, changed);
        QTEST(nameOf(m_state->status()), "status");
        QCOMPARE(changeTime(), changed);
    }

    void aChangeTimeOfZeroIsOkWhateverTheThreshold()
    {
        TestClock::set(0.0);
        m_preferences->write(u"staleThresholdMinutes"_s, -5);
        launchWith(90, 90, 0.0);
        QCOMPARE(changeTime(), 0.0);
        QCOMPARE(nameOf(m_state->status()), u"ok"_s);
    }

    void aCountWithoutMemoryIsComparedWithZero_data()
    {
        QTest::addColumn<int>("count");
        QTest::addColumn<double>("changed");
        QTest::newRow("no rise") << 0 << start - 600;
        QTest::newRow("a rise") << 1 << start;
    }

    void aCountWithoutMemoryIsComparedWithZero()
    {
        QFETCH(const int, count);
        giveCredentials();
        m_preferences->write(u"lastChangeTimestamp"_s, start - 600);
        serve(count);
        launch();
        QTEST(changeTime(), "changed");
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
};

QTEST_GUILESS_MAIN(StalenessTest)
#include "StalenessTest.moc"
