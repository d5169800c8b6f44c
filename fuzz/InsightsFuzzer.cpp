// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

// Any body gives either figures or a sentence for the user, and the figures are those of the first row.

#include "API/Figures.h"
#include "API/InsightsResponse.h"
#include "API/MetaAPIError.h"
#include "Input.h"
#include "JsonShape.h"
#include "NumberOracle.h"
#include "Require.h"

#include <QJsonDocument>

#include <algorithm>
#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

using Kind = JsonField::Kind;

const JsonShape &shape()
{
    static const JsonShape action{{"action_type"_L1}, {"value"_L1}};
    static const JsonShape row{{"impressions"_L1}, {"spend"_L1}, {"inline_link_clicks"_L1},
        {"cost_per_inline_link_click"_L1}, {"frequency"_L1}, {"reach"_L1}, {"inline_link_click_ctr"_L1},
        {"actions"_L1, Kind::List, action}};
    static const JsonShape error{{"message"_L1}, {"type"_L1}, {"code"_L1, Kind::Integer}};
    static const JsonShape response{{"data"_L1, Kind::List, row}, {"error"_L1, Kind::Record, error}};
    return response;
}

std::int64_t wholeOf(const QJsonObject &object, const QString &key)
{
    return NumberOracle::whole(object.value(key).toString(u"0"_s)).value_or(0);
}

bool isAmountOf(const QJsonObject &object, const QString &key, double amount)
{
    const QString text = object.value(key).toString(u"0"_s);
    const double expected = NumberOracle::real(text).value_or(0.0);
    const bool outOfRange = std::isnan(expected) && !text.contains(u'n', Qt::CaseInsensitive);
    return outOfRange || NumberOracle::same(amount, expected);
}

/// Adds as if there were no bounds; only then are they applied, once for each addition.
std::int64_t resultsOf(const QJsonObject &row)
{
    __extension__ using Wide = __int128;
    constexpr std::numeric_limits<std::int64_t> bounds;
    Wide sum = 0;
    const QJsonArray actions = row.value(u"actions"_s).toArray();
    for (const QJsonValue action : actions) {
        const QString type = action[u"action_type"_s].toString();
        if (type == u"lead"_s || type == u"purchase"_s || type == u"complete_registration"_s)
            sum = std::clamp<Wide>(sum + wholeOf(action.toObject(), u"value"_s), bounds.min(), bounds.max());
    }
    return static_cast<std::int64_t>(sum);
}

void checkToday(const TodayStats &today, const QJsonObject &row)
{
    require(today.impressions == wholeOf(row, u"impressions"_s), "today's impressions");
    require(today.linkClicks == wholeOf(row, u"inline_link_clicks"_s), "today's link clicks");
    require(isAmountOf(row, u"spend"_s, today.spend), "today's spend");
    require(isAmountOf(row, u"cost_per_inline_link_click"_s, today.cpc), "today's cost per click");
}

void checkWeek(const SevenDayStats &week, const QJsonObject &row)
{
    require(week.impressions == wholeOf(row, u"impressions"_s), "the week's impressions");
    require(week.reach == wholeOf(row, u"reach"_s), "the week's reach");
    require(week.conversions == resultsOf(row), "the week's results");
    require(isAmountOf(row, u"spend"_s, week.spend), "the week's spend");
    require(isAmountOf(row, u"frequency"_s, week.frequency), "the week's frequency");
    require(isAmountOf(row, u"cost_per_inline_link_click"_s, week.cpc), "the week's cost per click");
    require(isAmountOf(row, u"inline_link_click_ctr"_s, week.ctr), "the week's click-through rate");
}

void checkResponse(const InsightsResponse &response, const QJsonObject &object)
{
    const QJsonValue data = object.value(u"data"_s);
    require(response.data.has_value() == data.isArray(), "rows are there or not");
    if (response.data) {
        require(static_cast<qsizetype>(response.data->size()) == data.toArray().size(), "no row is lost or made up");
        if (!response.data->empty()) {
            checkToday(Figures::today(response.data->front()), data[0].toObject());
            checkWeek(Figures::sevenDay(response.data->front()), data[0].toObject());
        }
    }
    const QJsonValue error = object.value(u"error"_s);
    require(response.error.has_value() == error.isObject(), "an error is reported or not");
    if (response.error) {
        const QJsonValue message = error[u"message"_s];
        require(response.error->message.has_value() == message.isString(), "its message is there or not");
        const QString text = response.error->message.value_or(QString());
        require(MetaAPIError::apiError(text).errorDescription() == message.toString(), "and reaches the user as sent");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray body = Input(data, size).rest();
    const auto response = decodeJson<InsightsResponse>(body);
    const auto expected = misfit(body, shape());
    require(response.has_value() == !expected, "a body is accepted when, and only when, it fits");
    if (response) {
        checkResponse(*response, QJsonDocument::fromJson(body).object());
    } else {
        require(response.error() == expected, "the first misfit is the one reported");
        const QString sentence = MetaAPIError::networkError(describe(response.error())).errorDescription();
        require(sentence.startsWith(u"Network error: The data"_s) && sentence.endsWith(u'.'), "it is a sentence");
    }
    return 0;
}
