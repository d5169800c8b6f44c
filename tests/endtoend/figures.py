# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""What the ad account answers, and what the menu has to make of it."""

import json

from tls_service import Reply

TODAY_FIELDS = "impressions,spend,inline_link_clicks,cost_per_inline_link_click"
WEEK_FIELDS = "spend,impressions,frequency,reach,cost_per_inline_link_click,inline_link_click_ctr,actions"

DIVIDER = "-"
FOOTER = [DIVIDER, "Quit Vantelo"]
SETUP_ROWS = ["⚪ No credentials configured", DIVIDER, "Open Settings…", "Setup Guide…", *FOOTER]


def delivering(impressions, spend="1234.5"):
    """An account with these figures today, and always the same ones in the last seven days."""
    today = {"impressions": str(impressions), "spend": spend, "inline_link_clicks": "1087",
             "cost_per_inline_link_click": "1.135694", **_RANGE}
    return lambda request: _rows(today if "date_preset=today" in request.target else _WEEK)


def figure_rows(spend="$1234.50"):
    """The menu for delivering()."""
    return [
        "📊 Today", f"💰 Spend: {spend}", "🔗 Link Clicks: 1,087", "💲 CPC: $1.14", DIVIDER,
        "📅 Last 7 Days", "💰 Spend: $5339.50", "👁️ Impressions: 361,324", "🔁 Frequency: 2.00",
        "👥 Reach: 180,662", "💲 CPC: $0.12", "📈 CTR: 1.23%", "🎯 Results: 5", "💵 Cost/Result: $1067.90", DIVIDER,
        "Open Ads Manager", "🔄 Refresh", DIVIDER,
        "Settings…", "Check for Updates…", *FOOTER,
    ]


def failing(message, status):
    """An account that answers with an error, and with the header that comes with it."""
    body = {"error": {"message": message, "type": "OAuthException", "code": 190, "fbtrace_id": "AbCdEf"}}
    challenge = f'OAuth "Facebook Platform" "invalid_token" "{message[:20].encode("ascii", "replace").decode()}"'
    return lambda request: Reply(json.dumps(body).encode(), status, {"WWW-Authenticate": challenge})


def error_rows(message):
    """The menu for failing(); the message as cut by the caller."""
    return ["❌ API Error", message, DIVIDER, "🔄 Refresh", DIVIDER, "Open Settings…", *FOOTER]


def release(version):
    """An update feed."""
    feed = {"version": version, "download_url": "https://vantelo.example/download", "release_notes": "Faster."}
    return lambda request: Reply(json.dumps(feed).encode())


# Keys that nobody asked for come along with the figures.
_RANGE = {"account_id": "1234567890", "date_start": "2026-01-01", "date_stop": "2026-01-07"}
_WEEK = {
    "spend": "5339.5",
    "impressions": "361324",
    "frequency": "2",
    "reach": "180662",
    "cost_per_inline_link_click": "0.125",  # a tie: two decimals are 0.12, as C's printf has it
    "inline_link_click_ctr": "1.234",
    "actions": [
        {"action_type": "purchase", "value": "3", "1d_click": "2"},
        {"action_type": "link_click", "value": "50"},
        {"action_type": "complete_registration"},
        {"action_type": "lead", "value": "2"},
    ],
    **_RANGE,
}


def _rows(row):
    return Reply(json.dumps({"data": [row], "paging": {"cursors": {"before": "MAZDZD", "after": "MAZDZD"}}}).encode())
