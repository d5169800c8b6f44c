// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "State/AppState.h"

#include "API/FormatNumber.h"
#include "Foundation/Clock.h"
#include "Foundation/Deployment.h"
#include "Foundation/Task.h"
#include "Machine/PollTimer.h"
#include "Update/UpdateManager.h"

using namespace Qt::StringLiterals;

std::shared_ptr<AppState> AppState::create()
{
    const std::shared_ptr<AppState> state(new AppState);
    state->startTimer();
    // The first steps run on the next turn of the event loop, and only if the state is still there.
    QMetaObject::invokeMethod(
        state.get(), [state = state.get()] { Task::start(state->startUp()); }, Qt::QueuedConnection);
    return state;
}

AppState::AppState()
    : m_accessToken(m_defaults, u"accessToken"_s, {}),
      m_adAccountId(m_defaults, u"adAccountId"_s, {}),
      m_staleThresholdMinutes(m_defaults, u"staleThresholdMinutes"_s, 15),
      m_launchAtLogin(m_defaults, u"launchAtLogin"_s, false),
      m_lastImpressions(m_defaults, u"lastImpressions"_s, 0),
      m_lastChangeTimestamp(m_defaults, u"lastChangeTimestamp"_s, 0.0)
{
}

AppState::~AppState() = default;

void AppState::setAccessToken(const QString &token) { store(m_accessToken, token); }

void AppState::setAdAccountId(const QString &accountId) { store(m_adAccountId, accountId); }

void AppState::setStaleThresholdMinutes(std::int64_t minutes) { store(m_staleThresholdMinutes, minutes); }

std::unique_ptr<QObject> AppState::watchPreferences()
{
    return m_defaults.watch([this] { Q_EMIT objectWillChange(); });
}

bool AppState::hasCredentials() const { return !accessToken().isEmpty() && !adAccountId().isEmpty(); }

QString AppState::menuBarText() const
{
    const auto impressions = [this](auto) { return formatNumber(m_today.impressions); };
    return m_status.match([](const MonitorStatus::Error &) { return u"ERR"_s; },
        [&](MonitorStatus::Ok ok) { return impressions(ok); },
        [&](MonitorStatus::Stale stale) { return impressions(stale); },
        [](MonitorStatus::NoConfig) { return u"Setup"_s; });
}

void AppState::startTimer()
{
    m_timer = std::make_unique<PollTimer>(Deployment::pollInterval());
    connect(m_timer.get(), &PollTimer::timeout, this, [this] { Task::start(refresh()); });
}

QCoro::Task<> AppState::startUp()
{
    const auto self = shared_from_this();
    co_await refresh();
    co_await UpdateManager::shared().checkForUpdates(true);
}

QCoro::Task<> AppState::refresh()
{
    const auto self = shared_from_this(); // the program may quit while the request is out
    if (!hasCredentials()) {
        publish(m_status, MonitorStatus::noConfig());
        co_return;
    }
    publish(m_isLoading, true);
    const QString accountId = normalisedAccountId();
    const auto fetched = co_await m_api.fetchTodayInsights(accessToken(), accountId);
    if (!fetched) {
        publish(m_status, MonitorStatus::error(fetched.error().errorDescription()));
        publish(m_isLoading, false);
        co_return;
    }
    rememberImpressions(fetched->impressions);
    publish(m_today, *fetched);
    publish(m_lastRefresh, QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(secondsSince1970() * 1000.0)));
    publish(m_status, health());
    // A failure of the seven-day fetch is never shown; the old figures stay.
    if (const auto week = co_await m_api.fetch7DayInsights(accessToken(), accountId))
        publish(m_sevenDay, *week);
    publish(m_isLoading, false);
}

QCoro::Task<std::optional<QString>> AppState::testConnection()
{
    const auto self = shared_from_this();
    if (!hasCredentials())
        co_return u"Please enter both fields"_s;
    const auto fetched = co_await m_api.fetchTodayInsights(accessToken(), normalisedAccountId());
    if (!fetched)
        co_return fetched.error().errorDescription();
    co_await refresh();
    co_return std::nullopt;
}

void AppState::manualCheckForUpdates() { Task::start(UpdateManager::shared().checkForUpdates(false)); }

QString AppState::normalisedAccountId() const
{
    const QString accountId = adAccountId();
    return accountId.startsWith(u"act_"_s) ? accountId : u"act_"_s + accountId;
}

/// Only a rise between two successful fetches is a change. A fall, when the day rolls over, is none.
void AppState::rememberImpressions(std::int64_t impressions)
{
    const DefaultsStore::Transaction together(m_defaults); // a count is never stored without its time
    const bool rose = impressions > m_lastImpressions.get();
    if (rose || m_lastChangeTimestamp.get() == 0.0)
        store(m_lastChangeTimestamp, secondsSince1970());
    store(m_lastImpressions, impressions);
}

MonitorStatus AppState::health() const
{
    const double lastChange = m_lastChangeTimestamp.get();
    if (!(lastChange > 0.0))
        return MonitorStatus::ok();
    const double minutes = (secondsSince1970() - lastChange) / 60.0;
    return minutes > static_cast<double>(staleThresholdMinutes()) ? MonitorStatus::stale() : MonitorStatus::ok();
}
