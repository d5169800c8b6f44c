#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""What a program does that nobody asks for anything, looked at from outside: nothing, whatever it shows.

    test_quiet.py path/to/vantelo

Each step brings the program into a state, by way of what users do there, and expects that no request, no file and no
word on the bus comes of that, and that the processes' threads sleep on afterwards.
"""

import sys
from contextlib import contextmanager
from pathlib import Path

sys.dont_write_bytecode = True  # the source tree stays clean
sys.path.append(str(Path(__file__).resolve().parents[1] / "support"))

from gi.repository import GLib

from events import expect, poll_until, wait_until
from figures import SETUP_ROWS, error_rows, failing
from scenario import FEED, START, TODAY, run, start_and_settle, start_with_alert

LOOK = 1.5  # seconds
CARETS_TURNS = 2  # a second, in the field that has the focus


def with_its_figures(stage):
    with start_and_settle(stage) as program:
        sleeps_on(stage, program)
    expect(stage.targets(), START, "Requests")


def without_credentials(stage):
    stage.preferences.remove()
    with stage.start() as program:
        stage.wait_for_requests(1)
        stage.panel.wait_for_rows(SETUP_ROWS)
        sleeps_on(stage, program)
    expect(stage.targets(), [FEED], "Requests")


def after_a_failure(stage):
    stage.graph.answer = failing("Invalid token", status=400)
    with stage.start() as program:
        stage.wait_for_requests(2)
        stage.panel.wait_for_rows(error_rows("Invalid token"))
        sleeps_on(stage, program)
    expect(stage.targets(), [TODAY, FEED], "Requests")


def while_its_menu_is_looked_at(stage):
    with start_and_settle(stage) as program:
        with nothing_comes_of_it(stage):
            for _ in range(3):
                stage.panel.open_menu()
                stage.panel.hover("🔄 Refresh")
        sleeps_on(stage, program)
    expect(stage.targets(), START, "Requests")


def while_settings_are_open(stage):
    with start_and_settle(stage) as program:
        with nothing_comes_of_it(stage):
            stage.panel.click("Settings…")
            wait_for_window(program)
        sleeps_on(stage, program, wake_ups=CARETS_TURNS * LOOK + 1)
    expect(stage.targets(), START, "Requests")


def while_the_guide_is_open(stage):
    stage.preferences.remove()
    with stage.start() as program:
        stage.wait_for_requests(1)
        stage.panel.wait_for_rows(SETUP_ROWS)
        with nothing_comes_of_it(stage):
            stage.panel.click("Setup Guide…")
            wait_for_window(program)
        sleeps_on(stage, program)
    expect(stage.targets(), [FEED], "Requests")


def while_an_alert_is_open(stage):
    with start_with_alert(stage) as program:
        sleeps_on(stage, program)
    expect(sorted(stage.targets()), sorted(START), "Requests")


@contextmanager
def nothing_comes_of_it(stage):
    files, connections = files_of(stage.home), stage.connections()
    yield
    expect(files_of(stage.home), files, "Files")
    expect(stage.connections(since=connections), {}, "Connections")


def sleeps_on(stage, program, wake_ups=0):
    """What was begun may still take single steps, as the item's registration does; nothing goes on for itself."""
    with nothing_comes_of_it(stage):
        poll_until(lambda: sleeps_now(stage, program, wake_ups), f"{LOOK} s without a step of the program's")


def sleeps_now(stage, program, wake_ups):
    words = len(stage.monitor.messages())
    return woken_within(LOOK, program) <= wake_ups and len(stage.monitor.messages()) == words


def woken_within(seconds, program):
    before = program.wake_ups()
    pass_time(seconds)
    return program.wake_ups() - before


def pass_time(seconds):
    """The panel goes on meanwhile."""
    over = []
    GLib.timeout_add(int(seconds * 1000), over.append, True)
    wait_until(lambda: over, "the time")


def files_of(folder):
    """Whatever would change by a write: {path: (which file, since when, how long)}."""
    stats = {path: path.lstat() for path in folder.rglob("*")}
    return {str(path): (stat.st_ino, stat.st_mtime_ns, stat.st_size) for path, stat in stats.items()}


def wait_for_window(program):
    wait_until(lambda: "This plugin does not support raise()" in program.output, "the window")


STEPS = [
    with_its_figures,
    without_credentials,
    after_a_failure,
    while_its_menu_is_looked_at,
    while_settings_are_open,
    while_the_guide_is_open,
    while_an_alert_is_open,
]


sys.exit(run(STEPS))
