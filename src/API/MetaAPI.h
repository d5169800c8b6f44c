// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include "API/MetaAPIError.h"
#include "Models/SevenDayStats.h"
#include "Models/TodayStats.h"

#include <QCoroTask>
#include <QString>

#include <tl/expected.hpp>

/// The program's only client of the Graph API. It keeps no state, so any number of calls may run at once.
class MetaAPI {
public:
    /// The Graph API's version, a path segment of every address.
    const QString apiVersion = QStringLiteral("v21.0");

    /// Fetches today's figures of one ad account. Both texts go into the address as they stand: the caller has
    /// put "act_" in front of the account ID. An account without delivery has figures of zero.
    QCoro::Task<tl::expected<TodayStats, MetaAPIError>> fetchTodayInsights(
        const QString &token, const QString &accountId) const;

    /// Fetches the figures of the last seven days, otherwise like fetchTodayInsights().
    QCoro::Task<tl::expected<SevenDayStats, MetaAPIError>> fetch7DayInsights(
        const QString &token, const QString &accountId) const;

private:
    QString insightsAddress(const QString &accountId, const QString &query, const QString &token) const;
};
