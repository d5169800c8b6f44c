# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT

from pathlib import Path

from look import Look
from menu import AccessibleMenu
from session import Session
from sway import SwayDisplay

_BAR = '{"layer": "top", "position": "top", "height": 28, "modules-right": ["tray"], "tray": {"icon-size": 18}}'
_STYLE = "window#waybar { background: #303030; color: white; }"
_LIGHT = "window#waybar { background: #f0f0f0; color: black; }"


class Host:
    name = "Waybar (sway)"
    programs = ["waybar", "sway", "grim", "wtype"]
    accessible_names = ("waybar",)

    folder = Path(__file__).parents[1]
    has_panel = True
    text_beside = False
    opacity = 1.0
    cannot = {}
    nowhere = (640, 780)

    def open(self, log, look=Look()):
        self.session = Session(log, **look.environment())
        self.display = SwayDisplay(self.session, look.scale)
        (self.session.home / "bar").write_text(_BAR)
        (self.session.home / "style").write_text(_LIGHT if look.dark is False else _STYLE)

    def menu(self, screen):
        return AccessibleMenu(screen, self.display)

    def spoken(self, screen):
        return [text for program in screen.programs(*self.accessible_names) for node in program.shown_descendants()
                for text in (node.name, node.description) if text]

    def start_panel(self):
        self._panel = self.session.run(["waybar", "-c", self.session.home / "bar", "-s", self.session.home / "style"])

    def kill_panel(self):
        self._panel.kill()
        self._panel.wait()
