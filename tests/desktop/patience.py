# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""Waiting for what announces itself to nobody, such as pixels."""

from gi.repository import GLib

from events import wait_until

_LOOK_EVERY = 20  # milliseconds


def watch(condition, what, seconds=30.0):
    """Gives the condition's first true value. The deadline is generous: it only ends a failing test."""
    found = []

    def look():
        value = condition()
        if value:
            found.append(value)
        return bool(value)

    alarm = GLib.timeout_add(_LOOK_EVERY, lambda: GLib.SOURCE_CONTINUE)
    try:
        wait_until(look, what, seconds)
    finally:
        GLib.source_remove(alarm)
    return found[0]
