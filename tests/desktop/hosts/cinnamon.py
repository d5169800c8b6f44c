# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT

import re
from pathlib import Path

from patience import watch
from stage import BusMonitor
from x11desktop import X11Desktop

_WATCHER = Path("/etc/xdg/autostart/xapp-sn-watcher.desktop")

# The status applet alone: those that miss a service here would show a notification, which moves the item.
_SETTINGS = """[org/cinnamon]
enabled-applets=['panel1:right:0:xapp-status@cinnamon.org:1']

[org/cinnamon/desktop/notifications]
display-notifications=false
"""


class Host(X11Desktop):
    name = "Cinnamon"
    cannot = {"a_screen_reader_reads_the_state": "the words are in the tooltip alone, which comes with the pointer"}
    programs = ["cinnamon"]
    window_manager = []
    panel = ["cinnamon"]
    accessible_names = ("cinnamon",)
    environment = {"XDG_CURRENT_DESKTOP": "X-Cinnamon", "XDG_SESSION_TYPE": "x11", "LIBGL_ALWAYS_SOFTWARE": "1"}

    def configure(self):
        self.session.write_settings(_SETTINGS)
        self._bus_monitor = BusMonitor(self.session.environment)
        self.session.run(re.search("^Exec=(.*)$", _WATCHER.read_text(), re.MULTILINE)[1].split())

    def start_panel(self):
        """An applet that looks twice never sees a change (docs/desktops.md, note 7): Cinnamon is started anew then."""
        while self._looks_of_a_start() > 1:
            print("  (Cinnamon's applet has looked at the item twice and is started anew)", flush=True)
            self.kill_panel()

    def _looks_of_a_start(self):
        before, seen = self._looks(), []
        super().start_panel()

        def are_over():
            seen.append(self._looks())
            return seen[-1] > before and len(seen) > 25 and seen[-25] == seen[-1]

        watch(are_over, "a look of the applet at the item")
        return seen[-1] - before

    def _looks(self):
        return self._bus_monitor.messages().count(b"GetManagedObjects")
