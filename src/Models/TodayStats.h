// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

/// Today's delivery of the ad account; money in the account's own currency units.
struct TodayStats {
    std::int64_t impressions = 0;
    double spend = 0.0;
    std::int64_t linkClicks = 0;
    double cpc = 0.0; ///< cost per link click

    friend bool operator==(const TodayStats &, const TodayStats &) = default;
};
