# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""Waiting for things to happen, in the one thread that runs the steps."""

import threading
import time

from gi.repository import GLib


PATIENCE = 10.0  # seconds; generous, since it only ends a failing test


class Failure(Exception):
    """Something is not as it should be; the message says what."""


def something_happened():
    """Lets wait_until() look again; any thread may call it."""
    GLib.MainContext.default().wakeup()


def wait_until(condition, what, seconds=None):
    """Runs the main loop until the condition holds, for so many seconds or as long as patience lasts.

    `what` is a text, or a function that makes one once the wait was in vain.
    """
    seconds = seconds or PATIENCE
    deadline = time.monotonic() + seconds
    alarm = GLib.timeout_source_new(int(seconds * 1000) + 1)
    alarm.set_callback(lambda *_: GLib.SOURCE_CONTINUE)
    alarm.attach(GLib.MainContext.default())
    try:
        while not condition():
            if time.monotonic() >= deadline:
                raise Failure(f"Waited {seconds:g} s in vain for {what() if callable(what) else what}.")
            GLib.MainContext.default().iteration(True)
    finally:
        alarm.destroy()


def poll_until(condition, what):
    """The same for a condition that announces nothing."""
    look_again = GLib.timeout_add(20, lambda: GLib.SOURCE_CONTINUE)
    try:
        wait_until(condition, what)
    finally:
        GLib.source_remove(look_again)


def expect(actual, expected, what):
    if actual != expected:
        raise Failure(f"{what}:\n  expected {_listed(expected)}\n  found    {_listed(actual)}")


def _listed(value):
    return "".join(f"\n    {item!r}" for item in value) if isinstance(value, list) and value else repr(value)


class Recording:
    """Everything that comes out of a pipe, as it comes."""

    def __init__(self, pipe):
        self._pipe = pipe
        self.bytes = b""
        self._thread = threading.Thread(target=self._read, daemon=True)
        self._thread.start()

    def finish(self):
        """Waits for the other end to be closed."""
        self._thread.join()

    def _read(self):
        while piece := self._pipe.read1():
            self.bytes += piece
            something_happened()
