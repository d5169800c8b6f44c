# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""The ad account behind the service's real host names, in each state that the program tells of."""

import secrets
import time

import namespace
from figures import SETUP_ROWS, delivering, error_rows, failing, figure_rows, release
from stage import ADDRESSES, GRAPH, WEBSITE
from tls_service import Authority, TlsService

# Marks of access keys and of markup, an emoji, and pairs of both.
ERROR_WORDS = "(#200) ads_read & <b>ads__management</b> && 👨‍👩‍👧 are missing"

SETUP, DELIVERING, STALE, FAILING = "⚪ Setup", "🟢 12,345", "🔴 12,345", "⚪ ERR"
REFRESHED = "🟢 1,234,567"
ROWS = {SETUP: SETUP_ROWS, DELIVERING: figure_rows(), STALE: figure_rows(), FAILING: error_rows(ERROR_WORDS),
        REFRESHED: figure_rows(spend="$0.12")}
DESCRIPTIONS = {
    SETUP: "No credentials configured.",
    DELIVERING: "The ad account is delivering: 12,345 impressions today.",
    STALE: "The ad account has stopped delivering: 12,345 impressions today.",
    FAILING: "The ad account could not be read.",
}


class Account:
    def __init__(self):
        authority = Authority(namespace.private_folder("trusted"), "A trusted authority")
        namespace.furnish(ADDRESSES, authority.store)
        journal = []
        self._services = {host: TlsService(host, address, authority.server_context(host), journal)
                          for host, address in ADDRESSES.items()}
        self._services[WEBSITE].answer = release("0.0.1")

    def become(self, label, preferences):
        """What the program finds at its next refresh."""
        stored = {"accessToken": "EAAB" + secrets.token_hex(16), "adAccountId": "1234567890"}
        if label == SETUP:
            preferences.path.unlink(missing_ok=True)
            return
        if label == STALE:
            stored |= {"lastImpressions": 12345, "lastChangeTimestamp": time.time() - 16 * 60}
        preferences.write(**stored)
        self._services[GRAPH].answer = {
            DELIVERING: delivering(12345), STALE: delivering(12345), FAILING: failing(ERROR_WORDS, status=400),
            REFRESHED: delivering(1234567, spend="0.125"),
        }[label]
