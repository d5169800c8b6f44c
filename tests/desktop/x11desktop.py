# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""What the X11 desktops have in common: a display, a window manager, a panel that comes and goes."""

from pathlib import Path

from menu import AccessibleMenu
from session import Session
from x11 import X11Display


class X11Desktop:
    folder = Path(__file__).parent
    services = ()
    has_panel = True
    text_beside = False
    opacity = 1.0  # of the icon, as the panel draws it
    cannot = {}  # the name of a check and why this desktop does not pass it
    nowhere = (640, 760)  # where the pointer shows nothing and covers nothing
    environment = {}
    window_manager = ["openbox"]
    panel = []
    accessible_names = ()  # of the panel's processes

    def open(self, log, **environment):
        self.session = Session(log, self.services, **self.environment, **environment)
        self.display = X11Display(self.session)
        self.configure()
        if self.window_manager:
            self.session.run(self.window_manager)
        self._panel = None

    def configure(self):
        pass

    def menu(self, screen):
        return AccessibleMenu(screen, self.display)

    def spoken(self, screen):
        """All that the panel tells a screen reader."""
        return [text for program in screen.programs(*self.accessible_names) for node in program.descendants()
                for text in (node.name, node.description) if text]

    def start_panel(self):
        self._panel = self.session.run(self.panel)

    def kill_panel(self):
        self._panel.kill()
        self._panel.wait()
