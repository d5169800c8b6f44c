// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

class JsonReader;

// The body of an insights response, exactly as the service sends it: every figure is text. Members bear the
// keys' own names and are decoded in this order. Hidden behind MetaAPI.

/// The count for one type of action.
struct ActionItem {
    std::optional<QString> action_type;
    std::optional<QString> value;

    static ActionItem read(JsonReader &reader);
};

/// One row of figures; a figure without a value is absent.
struct InsightRow {
    std::optional<QString> impressions;
    std::optional<QString> spend;
    std::optional<QString> inline_link_clicks;
    std::optional<QString> cost_per_inline_link_click;
    std::optional<QString> frequency;
    std::optional<QString> reach;
    std::optional<QString> inline_link_click_ctr;
    std::optional<std::vector<ActionItem>> actions;

    static InsightRow read(JsonReader &reader);
};

/// The service's own report of a failure. Only the message is used.
struct APIErrorResponse {
    std::optional<QString> message;
    std::optional<QString> type;
    std::optional<std::int64_t> code;

    static APIErrorResponse read(JsonReader &reader);
};

/// The top level of every response.
struct InsightsResponse {
    std::optional<std::vector<InsightRow>> data;
    std::optional<APIErrorResponse> error;

    static InsightsResponse read(JsonReader &reader);
};
