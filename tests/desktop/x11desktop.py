# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""What the X11 desktops have in common: a display, a window manager, a panel that comes and goes."""

from pathlib import Path

from accessible import bus_address
from look import Look
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
    scales_by_resolution = True  # as desktops of GTK do; those of Qt tell a factor
    window_manager = ["openbox"]
    panel = []
    accessible_names = ()  # of the panel's processes

    def open(self, log, look=Look()):
        self.look = look
        scaling = {"GDK_SCALE": look.scale, "GDK_DPI_SCALE": 1 / look.scale}
        if not self.scales_by_resolution:
            scaling = {"QT_SCALE_FACTOR": look.scale}
        self.session = Session(log, self.services, **self.environment | look.environment(),
                               **{name: str(factor) for name, factor in scaling.items()})
        self.display = X11Display(self.session, look.scale, look.scale if self.scales_by_resolution else 1)
        self.display.tell_accessibility_bus(bus_address(self.session.bus))
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
        return [text for program in screen.programs(*self.accessible_names) for node in program.shown_descendants()
                for text in (node.name, node.description) if text]

    def start_panel(self):
        self._panel = self.session.run(self.panel)

    def kill_panel(self):
        self._panel.kill()
        self._panel.wait()
