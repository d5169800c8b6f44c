# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""The ad account over a year: days that roll over, nights, halts of hours, counts that are corrected downwards."""

DAY = 86_400


class Account:
    def __init__(self, random):
        self._random = random
        self._day = None
        self._count = 0
        self._halted_until = 0.0

    def advance(self, now):
        if self._day != now // DAY:
            self._day = now // DAY
            self._count = self._random.choice([0, 0, self._random.randrange(40)])
        self._deliver(now, (now % DAY) / 3600)

    def _deliver(self, now, hour):
        chance, rise = self._random.random(), self._random.randrange(1, 400)
        if chance < 0.006:
            self._halted_until = now + self._random.randrange(600, 6 * 3600)
        elif chance < 0.01:
            self._count = max(0, self._count - rise)  # the service takes back what was no honest view
        elif now >= self._halted_until and 5 < hour < 23 and chance < 0.7:
            self._count += rise

    def rise(self):
        self._count += 1_000

    def row(self, preset):
        """One row as the service sends it, with more keys than anybody asks for."""
        return self._today() if preset == "today" else self._week()

    def _today(self):
        clicks = self._count // 41
        row = {"impressions": str(self._count), "date_start": "2026-01-01", "date_stop": "2026-01-01",
               "spend": self._money(self._count / 73)}
        if clicks:  # a metric without a value is absent
            row |= {"inline_link_clicks": str(clicks),
                    "cost_per_inline_link_click": self._money(self._count / 73 / clicks)}
        return row

    def _week(self):
        count = self._count + 7_000 + self._random.randrange(10**7)
        reach = count * 2 // 3
        actions = [{"action_type": kind, "value": str(self._random.randrange(50)), "28d_click": "9"}
                   for kind in self._random.sample(["lead", "purchase", "complete_registration", "post_engagement",
                                                    "Lead", "link_click", "lead"], self._random.randrange(6))]
        row = {"account_id": "731", "impressions": str(count), "reach": str(reach), "frequency": str(count / reach),
               "spend": self._money(count / 73), "cost_per_inline_link_click": self._money(0.8),
               "inline_link_click_ctr": f"{self._random.random() * 5:.6f}"}
        return row | ({"actions": actions} if actions else {})

    def _money(self, value):
        return self._random.choice(["{:.0f}", "{:.1f}", "{:.2f}", "{:.6f}"]).format(value)
