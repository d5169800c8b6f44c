// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Models/SevenDayStats.h"
#include "Models/TodayStats.h"

#include <QString>

#include <cstdint>
#include <optional>

struct InsightRow;

/// How the service's texts become figures. A figure that is missing or does not parse is 0.
namespace Figures {

/// An optional sign and ASCII digits, nothing else; 0 for all other texts and beyond 64 bits.
std::int64_t wholeNumber(const std::optional<QString> &text);

/// What C's strtod reads in the C locale, the whole text and no leading white space; 0.0 for all other texts.
double amount(const std::optional<QString> &text);

TodayStats today(const InsightRow &row);

/// Conversions are the sum of the actions that count as results; the sum saturates.
SevenDayStats sevenDay(const InsightRow &row);

} // namespace Figures
