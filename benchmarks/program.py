# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""One contender at work."""

import re
import signal
import subprocess
import threading
import time

from events import Failure, something_happened, wait_until
import readings
from waiting import PATIENCE, run_loop


class Program:
    """A contender's process, started with the arena's answers of the moment. Its text is what a panel shows of it."""

    def __init__(self, arena, command):
        self._arena = arena
        self._panel = arena.desk.panel
        self._panel.forget()
        self._printed = ""
        self.started = time.monotonic()
        self._process = subprocess.Popen(command, env=arena.desk.environment, stdin=subprocess.DEVNULL,
                                         stdout=subprocess.PIPE, text=True)
        self.pid = self._process.pid
        threading.Thread(target=self._follow_output, daemon=True).start()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self._process.kill()
        self._process.wait()

    def wait_for_item(self):
        self._wait_until(lambda: self._panel.present or self._printed, "an item in the panel")

    def wait_for_figure(self):
        self._wait_until(lambda: str(self._arena.impressions) in re.findall(r"\d+", self.text().replace(",", "")),
                         f"{self._arena.impressions} as the figure")

    def _wait_until(self, condition, what):
        wait_until(lambda: condition() or self._process.poll() is not None,
                   lambda: f"{what}; it shows {self.text()!r}", PATIENCE)
        if not condition():
            raise Failure(f"{self._process.args} has ended by itself.")

    def text(self):
        return self._printed or self._panel.text

    def read_menu(self):
        """As panels do, early on: so that it is no part of a refresh."""
        if self._panel.present:
            wait_until(self._panel.menu, "the menu", PATIENCE)

    def refresh(self):
        """Asks for new figures, as a user does."""
        if self._panel.present:
            self._panel.click_row("🔄 Refresh")
        else:
            self._process.send_signal(signal.SIGUSR1)

    def settle(self, quiet=0.2):
        """Waits until no thread of it has run for a while."""
        before = None
        while before != (before := readings.switches(self.pid)):
            run_loop(quiet)

    def _follow_output(self):
        for line in self._process.stdout:
            self._printed = self._printed if line.startswith("7 days") else line.strip()
            something_happened()
        something_happened()  # it has ended
