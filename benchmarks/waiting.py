# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""Waiting for what tells nobody when it happens."""

import time

from gi.repository import GLib

from events import Failure

PATIENCE = 120  # seconds; it only ends what has failed


def run_loop(seconds):
    """Lets time pass; what arrives is handled."""
    over = time.monotonic() + seconds
    alarm = GLib.timeout_source_new(int(seconds * 1000) + 1)
    alarm.set_callback(lambda *_: GLib.SOURCE_CONTINUE)
    alarm.attach(GLib.MainContext.default())
    while time.monotonic() < over:
        GLib.MainContext.default().iteration(True)
    alarm.destroy()


def look_until(condition, what):
    over = time.monotonic() + PATIENCE
    while not condition():
        if time.monotonic() > over:
            raise Failure(f"Waited {PATIENCE} s in vain for {what}.")
        run_loop(0.02)
