// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "API/InsightsResponse.h"

#include "Foundation/JsonReader.h"

using namespace Qt::StringLiterals;

ActionItem ActionItem::read(JsonReader &reader)
{
    return {.action_type = reader.text(u"action_type"_s), .value = reader.text(u"value"_s)};
}

InsightRow InsightRow::read(JsonReader &reader)
{
    return {
        .impressions = reader.text(u"impressions"_s),
        .spend = reader.text(u"spend"_s),
        .inline_link_clicks = reader.text(u"inline_link_clicks"_s),
        .cost_per_inline_link_click = reader.text(u"cost_per_inline_link_click"_s),
        .frequency = reader.text(u"frequency"_s),
        .reach = reader.text(u"reach"_s),
        .inline_link_click_ctr = reader.text(u"inline_link_click_ctr"_s),
        .actions = reader.list<ActionItem>(u"actions"_s),
    };
}

APIErrorResponse APIErrorResponse::read(JsonReader &reader)
{
    return {
        .message = reader.text(u"message"_s),
        .type = reader.text(u"type"_s),
        .code = reader.integer(u"code"_s),
    };
}

InsightsResponse InsightsResponse::read(JsonReader &reader)
{
    return {
        .data = reader.list<InsightRow>(u"data"_s),
        .error = reader.record<APIErrorResponse>(u"error"_s),
    };
}
