#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""Whole intervals between polls, on a clock that runs faster.

    test_interval.py path/to/vantelo path/to/the/library/of/FastClock.cpp
"""

import sys
import time
from pathlib import Path

sys.dont_write_bytecode = True  # the source tree stays clean
sys.path.append(str(Path(__file__).resolve().parents[1] / "support"))

from events import Failure, expect
from figures import delivering
from scenario import FEED, TODAY, WEEK, run, start_and_settle, start_with_alert

LIBRARY = sys.argv[2]
FACTOR = 200
INTERVAL = 600 / FACTOR  # seconds
FAST_CLOCK = {"LD_PRELOAD": LIBRARY, "FAST_CLOCK": str(FACTOR)}


def polls_come_by_themselves(stage):
    begun = time.monotonic()
    with start_and_settle(stage, **FAST_CLOCK):
        for impressions in (12346, 12347):
            expect_new_figures(stage, impressions, begun)


def an_open_alert_does_not_hold_them_up(stage):
    begun = time.monotonic()
    with start_with_alert(stage, **FAST_CLOCK):
        expect_new_figures(stage, 12346, begun)


def expect_new_figures(stage, impressions, begun):
    """Nobody asks for them, and no poll comes before its time."""
    stage.graph.answer = delivering(impressions)
    stage.panel.wait_for_title(f"🟢 {impressions:,}")
    polls, passed = stage.targets().count(TODAY) - 1, time.monotonic() - begun
    if passed < polls * INTERVAL:
        raise Failure(f"Poll {polls} came {passed * FACTOR:.0f} s after the start.")
    expect({target: stage.targets().count(target) for target in stage.targets() if target not in (TODAY, WEEK)},
           {FEED: 1}, "Requests besides the polls'")


STEPS = [
    polls_come_by_themselves,
    an_open_alert_does_not_hold_them_up,
]


sys.exit(run(STEPS))
