// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include "API/MetaAPI.h"
#include "Models/MonitorStatus.h"
#include "Models/SevenDayStats.h"
#include "Models/TodayStats.h"
#include "Preferences/AppStorage.h"

#include <QCoroTask>
#include <QDateTime>
#include <QObject>

#include <memory>
#include <optional>

class PollTimer;

/// The program's one view-model: the preferences, the published figures and status, and the poll cycle that
/// keeps them fresh. Lives on the main thread. Every published write and every write to a preference
/// announces objectWillChange() before the value changes.
class AppState : public QObject, public std::enable_shared_from_this<AppState> {
    Q_OBJECT

public:
    /// Makes the state, arms the poll timer and begins, without waiting for it, the first refresh followed by
    /// the silent update check.
    static std::shared_ptr<AppState> create();
    ~AppState() override;

    // Preferences
    QString accessToken() const { return m_accessToken.get(); }
    void setAccessToken(const QString &token);
    QString adAccountId() const { return m_adAccountId.get(); }
    void setAdAccountId(const QString &accountId);
    /// Minutes without a rise of the impressions before the account counts as stale; used as stored.
    std::int64_t staleThresholdMinutes() const { return m_staleThresholdMinutes.get(); }
    void setStaleThresholdMinutes(std::int64_t minutes);
    /// What other programs write to the preferences is announced too, while the returned object lives.
    std::unique_ptr<QObject> watchPreferences();

    // Published, in memory only
    const TodayStats &today() const { return m_today; }
    const SevenDayStats &sevenDay() const { return m_sevenDay; }
    const MonitorStatus &status() const { return m_status; }
    bool isLoading() const { return m_isLoading; }
    /// Time of the last successful fetch of today's figures.
    const std::optional<QDateTime> &lastRefresh() const { return m_lastRefresh; }

    /// Whether both credentials are non-empty; nothing is trimmed.
    bool hasCredentials() const;
    /// What stands behind the dot in the menu bar.
    QString menuBarText() const;

    /// One poll: today's figures, the status, then the last seven days. Refreshes may overlap.
    QCoro::Task<> refresh();
    /// Tries the stored credentials, then refreshes. Nothing on success, otherwise the message to show.
    QCoro::Task<std::optional<QString>> testConnection();
    /// Starts an update check whose every outcome is shown; returns at once.
    void manualCheckForUpdates();

Q_SIGNALS:
    void objectWillChange();

private:
    AppState();

    void startTimer();
    QCoro::Task<> startUp();
    QString normalisedAccountId() const;
    void rememberImpressions(std::int64_t impressions);
    MonitorStatus health() const;

    template <class Property, class Value>
    void publish(Property &property, Value &&value)
    {
        Q_EMIT objectWillChange();
        property = std::forward<Value>(value);
    }
    template <class Value>
    void store(AppStorage<Value> &preference, const Value &value)
    {
        Q_EMIT objectWillChange();
        preference.set(value);
    }

    DefaultsStore m_defaults;
    AppStorage<QString> m_accessToken;
    AppStorage<QString> m_adAccountId;
    AppStorage<std::int64_t> m_staleThresholdMinutes;
    AppStorage<bool> m_launchAtLogin; ///< declared only: the program does not register itself as a login item

    TodayStats m_today;
    SevenDayStats m_sevenDay;
    MonitorStatus m_status = MonitorStatus::noConfig();
    bool m_isLoading = false;
    std::optional<QDateTime> m_lastRefresh;

    // The memory of the staleness rule; stored, so that it survives relaunches.
    AppStorage<std::int64_t> m_lastImpressions;
    AppStorage<double> m_lastChangeTimestamp; ///< seconds since 1970; 0.0 while no change has been seen

    std::unique_ptr<PollTimer> m_timer;
    MetaAPI m_api;
};
