// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

/// The ad account's delivery over the last seven days; money in the account's own currency units.
struct SevenDayStats {
    double spend = 0.0;
    std::int64_t impressions = 0;
    double frequency = 0.0; ///< average impressions per person reached
    std::int64_t reach = 0; ///< people
    double cpc = 0.0;       ///< cost per link click
    double ctr = 0.0;       ///< link click-through rate, in percent as the service reports it
    std::int64_t conversions = 0;

    friend bool operator==(const SevenDayStats &, const SevenDayStats &) = default;
};
