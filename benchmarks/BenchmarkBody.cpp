// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "BenchmarkBody.h"

#include "Http/HttpSession.h"

namespace {

constexpr char head[] = R"({"data": [{"impressions": "361324", "spend": "5339.5", "frequency": "2", "reach": "180662",
    "cost_per_inline_link_click": "0.125", "inline_link_click_ctr": "1.234", "actions": [)";
constexpr char action[] = R"({"action_type": "purchase", "value": "3", "1d_click": "2"},)";
constexpr char tail[] = R"({"action_type": "lead", "value": "2"}]}]})";

} // namespace

QByteArray bodyWithActions(qsizetype count) { return head + QByteArray(action).repeated(count - 1) + tail; }

QByteArray largestBody()
{
    const qsizetype room = HttpSession::maximumBodySize - QByteArray(head).size() - QByteArray(tail).size();
    return bodyWithActions(room / QByteArray(action).size() + 1);
}
