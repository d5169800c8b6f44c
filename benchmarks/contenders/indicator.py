#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""What people write instead: an indicator in Python and GTK. indicator.py TODAY WEEK (addresses)"""

import json
import sys
import time
import urllib.request

import gi

gi.require_version("Gtk", "3.0")
gi.require_version("AyatanaAppIndicator3", "0.1")
from gi.repository import AyatanaAppIndicator3 as AppIndicator, GLib, Gtk  # noqa: E402

TODAY, WEEK = sys.argv[1:]
RESULTS = {"purchase", "lead", "complete_registration"}


class Indicator:
    def __init__(self):
        self.indicator = AppIndicator.Indicator.new("ads", "user-available",
                                                    AppIndicator.IndicatorCategory.APPLICATION_STATUS)
        self.indicator.set_status(AppIndicator.IndicatorStatus.ACTIVE)
        self.rows = [Gtk.MenuItem(sensitive=False) for _ in range(6)]
        refresh = Gtk.MenuItem(label="🔄 Refresh")
        refresh.connect("activate", lambda *_: self.refresh())
        menu = Gtk.Menu()
        for row in [*self.rows, refresh]:
            menu.append(row)
        menu.show_all()
        self.indicator.set_menu(menu)
        self.impressions, self.changed = 0, time.time()
        GLib.timeout_add_seconds(600, self.refresh)
        GLib.idle_add(lambda: self.refresh() and GLib.SOURCE_REMOVE)

    def refresh(self):
        try:
            today = fetch(TODAY)
            self.show_today(today)
            self.show_week(fetch(WEEK))
        except OSError as error:
            self.indicator.set_label("⚪ ERR", "")
            print(type(error).__name__, file=sys.stderr)
        return GLib.SOURCE_CONTINUE

    def show_today(self, today):
        impressions = int(today["impressions"])
        if impressions > self.impressions:
            self.changed = time.time()
        self.impressions = impressions
        dot = "🔴" if time.time() - self.changed > 15 * 60 else "🟢"
        self.indicator.set_label(f"{dot} {impressions:,}", "")
        self.rows[0].set_label(f"Spend: ${float(today['spend']):.2f}")
        self.rows[1].set_label(f"Link Clicks: {int(today['inline_link_clicks']):,}")
        self.rows[2].set_label(f"CPC: ${float(today['cost_per_inline_link_click']):.2f}")

    def show_week(self, week):
        results = sum(int(action.get("value", 0)) for action in week["actions"] if action["action_type"] in RESULTS)
        self.rows[3].set_label(f"Last 7 days: ${float(week['spend']):.2f}, {int(week['impressions']):,} impressions")
        self.rows[4].set_label(f"Reach: {int(week['reach']):,}, frequency {float(week['frequency']):.2f}")
        self.rows[5].set_label(f"CTR: {float(week['inline_link_click_ctr']):.2f} %, results: {results}")


def fetch(address):
    with urllib.request.urlopen(address, timeout=60) as reply:
        return json.load(reply)["data"][0]


Indicator()
Gtk.main()
