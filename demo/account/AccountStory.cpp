// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "AccountStory.h"

#include <QTimeZone>

#include <cmath>

namespace {

constexpr int minutesOfDay = 24 * 60;
constexpr int startMinute = 10 * 60;

/// Whole minutes since the midnight that the first day began with; negative before it.
int minuteOf(double minutes) { return static_cast<int>(std::floor(minutes)) + startMinute; }

int dayOf(int minute) { return static_cast<int>(std::floor(static_cast<double>(minute) / minutesOfDay)); }

double hill(double minute, double peak, double width) { return std::exp(-std::pow((minute - peak) / width, 2.0)); }

/// Between 0.8 and 1.2, always the same for the same minute.
double chance(int minute)
{
    quint32 mixed = static_cast<quint32>(minute) * 2654435761U;
    mixed ^= mixed >> 15U;
    return 0.8 + 0.4 * static_cast<double>(mixed & 0xffffU) / 0xffff;
}

/// Impressions in one minute of delivery: few at night, a hill after noon, a higher one in the evening.
double impressionsIn(int minute)
{
    const double timeOfDay = minute - dayOf(minute) * minutesOfDay;
    return (12.0 + 60.0 * hill(timeOfDay, 13 * 60, 190.0) + 88.0 * hill(timeOfDay, 20.5 * 60, 130.0)) * chance(minute);
}

/// Before the story began nothing ever went wrong.
bool delivers(int minute)
{
    if (minute < startMinute)
        return true;
    const auto phase = AccountStory::phase(minute - startMinute);
    return phase == AccountStory::Phase::Delivering || phase == AccountStory::Phase::Recovered;
}

double impressionsBetween(int begin, int end)
{
    double sum = 0.0;
    for (int minute = begin; minute < end; ++minute) {
        if (delivers(minute))
            sum += impressionsIn(minute);
    }
    return sum;
}

/// Everything else follows from the impressions, so that all figures rise and rest together.
Delivery delivery(double impressions, double impressionsPerPerson)
{
    const auto whole = [](double count) { return static_cast<std::int64_t>(count); };
    return {
        .impressions = whole(impressions),
        .reach = whole(impressions / impressionsPerPerson),
        .linkClicks = whole(impressions * 0.0131),
        .leads = whole(impressions * 0.00021),
        .purchases = whole(impressions * 0.00034),
        .spend = std::floor(impressions * 0.94) / 100.0,
    };
}

} // namespace

AccountStory::Phase AccountStory::phase(double minutes)
{
    const double inPeriod = minutes - std::floor(minutes / period) * period;
    if (inPeriod < startOfStop)
        return Phase::Delivering;
    if (inPeriod < startOfExpiry)
        return Phase::Stopped;
    return inPeriod < startOfRecovery ? Phase::TokenExpired : Phase::Recovered;
}

QDateTime AccountStory::time(double minutes) const
{
    return m_firstDay.startOfDay(QTimeZone::utc()).addSecs(qint64{minuteOf(minutes)} * 60);
}

Delivery AccountStory::today(double minutes) const
{
    const int now = minuteOf(minutes);
    return delivery(impressionsBetween(dayOf(now) * minutesOfDay, now), 1.22);
}

Delivery AccountStory::lastSevenDays(double minutes) const
{
    const int midnight = dayOf(minuteOf(minutes)) * minutesOfDay;
    return delivery(impressionsBetween(midnight - 7 * minutesOfDay, midnight), 2.37);
}
