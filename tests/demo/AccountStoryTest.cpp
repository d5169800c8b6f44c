// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "AccountStory.h"

#include <QTest>
#include <QTimeZone>

using Phase = AccountStory::Phase;

namespace {

constexpr int minutesOfDay = 24 * 60;
constexpr int toMidnight = 14 * 60; ///< the story begins at ten in the morning

} // namespace

class AccountStoryTest : public QObject {
    Q_OBJECT

    const AccountStory m_story{QDate(2026, 3, 14)};

private Q_SLOTS:
    void theStoryGoesRound_data()
    {
        QTest::addColumn<double>("minutes");
        QTest::addColumn<int>("phase");
        const auto row = [](const char *name, double minutes, Phase phase) {
            QTest::newRow(name) << minutes << static_cast<int>(phase);
        };
        row("first minute", 0.0, Phase::Delivering);
        row("before the stop", AccountStory::startOfStop - 0.1, Phase::Delivering);
        row("stop", AccountStory::startOfStop, Phase::Stopped);
        row("expiry", AccountStory::startOfExpiry, Phase::TokenExpired);
        row("recovery", AccountStory::startOfRecovery, Phase::Recovered);
        row("end of the round", AccountStory::period - 0.1, Phase::Recovered);
        row("second round", AccountStory::period, Phase::Delivering);
        row("a later stop", 40.0 * AccountStory::period + AccountStory::startOfStop, Phase::Stopped);
    }

    void theStoryGoesRound()
    {
        QFETCH(const double, minutes);
        QFETCH(const int, phase);
        QCOMPARE(static_cast<int>(AccountStory::phase(minutes)), phase);
    }

    void figuresRiseFromPollToPollWhileDelivering()
    {
        for (int minutes = 10; minutes <= AccountStory::startOfStop; minutes += 10) {
            QVERIFY(m_story.today(minutes).impressions > m_story.today(minutes - 10).impressions);
            QVERIFY(m_story.today(minutes).spend > m_story.today(minutes - 10).spend);
        }
    }

    void nothingMovesFromTheStopToTheRecovery()
    {
        const Delivery atStop = m_story.today(AccountStory::startOfStop);
        QVERIFY(m_story.today(AccountStory::startOfRecovery) == atStop);
        QVERIFY(m_story.today(AccountStory::startOfRecovery + 10).impressions > atStop.impressions);
    }

    void theStopLastsLongEnoughToBeNoticed()
    {
        // The program sees the last rise up to ten minutes late, calls it stale after fifteen more, and only
        // looks every ten.
        QVERIFY(AccountStory::startOfExpiry - AccountStory::startOfStop > 10 + 15 + 10);
    }

    void todayBeginsAgainAtMidnight()
    {
        QVERIFY(m_story.today(toMidnight - 1).impressions > 30'000);
        QCOMPARE(m_story.today(toMidnight), Delivery());
        QCOMPARE(m_story.time(toMidnight), QDateTime(QDate(2026, 3, 15), QTime(0, 0), QTimeZone::utc()));
    }

    void theDaysBehindStandStillUntilMidnight()
    {
        const Delivery week = m_story.lastSevenDays(0.0);
        QCOMPARE(m_story.lastSevenDays(toMidnight - 1), week);
        QVERIFY(m_story.lastSevenDays(toMidnight) != week);
        QVERIFY(week.impressions > 5 * m_story.today(toMidnight - 1).impressions);
    }

    void eveningsDeliverMoreThanNights()
    {
        // In the recovered hours of the story, so that no stop stands between.
        const auto within = [this](int begin, int end) {
            return m_story.today(end).impressions - m_story.today(begin).impressions;
        };
        const int evening = 2 * AccountStory::period + AccountStory::startOfRecovery; // from 20:06
        const int night = 4 * AccountStory::period + AccountStory::startOfRecovery;   // from 04:06
        QVERIFY(within(evening, evening + 60) > 5 * within(night, night + 60));
    }

    void figuresFitTogether()
    {
        for (int minutes = 0; minutes < 2 * minutesOfDay; minutes += 7) {
            const Delivery day = m_story.today(minutes);
            QVERIFY(day.reach <= day.impressions);
            QVERIFY(day.linkClicks <= day.reach);
            QVERIFY(day.purchases + day.leads <= day.linkClicks);
        }
    }
};

QTEST_GUILESS_MAIN(AccountStoryTest)
#include "AccountStoryTest.moc"
