// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QDate>
#include <QDateTime>

#include <cstdint>

/// What an ad account delivered in some span of time; money in dollars.
struct Delivery {
    std::int64_t impressions = 0;
    std::int64_t reach = 0;
    std::int64_t linkClicks = 0;
    std::int64_t leads = 0;
    std::int64_t purchases = 0;
    double spend = 0.0;

    friend bool operator==(const Delivery &, const Delivery &) = default;
};

/// The life of the demo account as a pure function of its own time: minutes since the story began, at ten in
/// the morning of its first day. Every four hours the same things happen: it delivers, delivery stops, the
/// access token expires, all is well again.
class AccountStory {
public:
    enum class Phase { Delivering, Stopped, TokenExpired, Recovered };

    // None of them a multiple of ten minutes, so that it does not take luck which poll sees them first.
    static constexpr int startOfStop = 36;
    static constexpr int startOfExpiry = 86;
    static constexpr int startOfRecovery = 126;
    static constexpr int period = 240;

    explicit AccountStory(QDate firstDay) : m_firstDay(firstDay) {}

    static Phase phase(double minutes);

    QDateTime time(double minutes) const;

    /// Since midnight.
    Delivery today(double minutes) const;

    /// The seven whole days before today.
    Delivery lastSevenDays(double minutes) const;

private:
    QDate m_firstDay;
};
