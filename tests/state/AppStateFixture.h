// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/Task.h"
#include "Json.h"
#include "LoopbackService.h"
#include "State/AppState.h"
#include "TestClock.h"
#include "TestDeployment.h"
#include "TestMachine.h"
#include "TestPreferences.h"
#include "Update/UpdateManager.h"

#include <QCoroTask>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using Reply = LoopbackService::Reply;

inline constexpr double start = 1'700'000'000.0;

inline QByteArray impressions(std::int64_t count)
{
    return json("{'data': [{'impressions': '") + QByteArray::number(qlonglong{count}) + json("'}]}");
}

inline QString nameOf(const MonitorStatus &status)
{
    return status.match([](const MonitorStatus::Error &error) { return u"error: "_s + error.message; },
        [](MonitorStatus::Ok) { return u"ok"_s; }, [](MonitorStatus::Stale) { return u"stale"_s; },
        [](MonitorStatus::NoConfig) { return u"noConfig"_s; });
}

/// A state with a service on loopback, a clock that stands still and preferences of its own, new for every test.
class AppStateFixture : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestClock::set(start);
        m_preferences = std::make_unique<TestPreferences>();
        m_service = std::make_unique<LoopbackService>();
        UpdateManager::shared(); // keeps the address that it finds at first
    }

    void cleanup()
    {
        m_state.reset();
        m_service.reset();
        QTRY_COMPARE(Task::running(), 0);
        m_preferences.reset();
        TestDeployment::setTransferTimeout(30s);
        TestMachine::setOnline(true);
    }

protected:
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
        settle();
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

    /// Time passes, asleep or awake, and all that comes of it has ended.
    void pass(std::chrono::nanoseconds time)
    {
        TestMachine::pass(time);
        settle();
    }
    void sleep(std::chrono::nanoseconds time)
    {
        TestMachine::sleep(time);
        settle();
    }
    static void settle()
    {
        do
            QCoreApplication::processEvents();
        while (TestMachine::isOnline() && TestMachine::isWaitedFor()); // a poll at waking is about to hear of it
        QTRY_COMPARE(Task::running(), 0);
    }

    qsizetype polls() const { return m_service->requestsWith("date_preset=today"); }

    void refresh() { QCoro::waitFor(m_state->refresh()); }
    QString test() { return QCoro::waitFor(m_state->testConnection()).value_or(u"success"_s); }

    double changeTime() const { return m_preferences->stored(u"lastChangeTimestamp"_s).toDouble(); }
    std::int64_t lastImpressions() const { return m_preferences->stored(u"lastImpressions"_s).toLongLong(); }

    std::unique_ptr<TestPreferences> m_preferences;
    std::unique_ptr<LoopbackService> m_service;
    std::shared_ptr<AppState> m_state;
};
