# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT

import json
import os
from pathlib import Path

from gi.repository import GLib

import namespace
from demo.stage.desktop import EXTENSION, SIZE, Desktop, missing_packages
from demo.stage.hands import ESCAPE, SPACE, TAB, Hands
from demo.stage.processes import NotYet, Processes
from figures import DIVIDER
from look import Look
from patience import watch
from picture import Picture, Rectangle
from session import browser_in

_KEYS = {"Tab": TAB, "space": SPACE, "Escape": ESCAPE, "Return": 0xFF0D}
_INDICATOR = """Object.entries(Main.panel.statusArea).find(([name]) => name.includes('NotificationItem/vantelo'))?.[1]"""

class Host:
    """The panel of GNOME Shell is the shell, and on Wayland nothing outlives it; what can go and come again is the
    extension that shows items."""

    name = "GNOME Shell with AppIndicator"
    folder = Path(__file__).parents[1]
    programs = ["gnome-shell", *missing_packages()]
    has_panel = True
    opacity = 240 / 255  # a default of the extension
    cannot = {}
    look = Look()

    @property
    def text_beside(self):
        return "left" if self.look.right_to_left else "right"

    @property
    def nowhere(self):
        return tuple(self.look.scale * side - 1 for side in SIZE)

    def open(self, log, look=None):
        self.look = look or self.look
        home = namespace.private_folder("home")
        os.environ["PATH"] = f"{browser_in(home)}:{os.environ['PATH']}"
        processes = Processes().__enter__()  # they end with the namespace
        desktop = Desktop(processes, home / "gnome", log, self.look.scale, "ar" if self.look.right_to_left else "")
        desktop.open()
        self.session = _Session(desktop, processes, home, log)
        self.display = _Display(desktop, home)
        self._desktop = desktop
        # The test clicks quicker than a user, and the extension takes two clicks on its item for a double click.
        desktop.evaluate("imports.gi.Clutter.Settings.get_default().double_click_time = 1; null")
        self.kill_panel()  # until start_panel()

    def start_panel(self):
        self._desktop.evaluate(f"Main.extensionManager.enableExtension('{EXTENSION}'); null")

    def kill_panel(self):
        self._desktop.evaluate(f"Main.extensionManager.disableExtension('{EXTENSION}'); null")

    def menu(self, _screen):
        return _Menu(self._desktop, self.display)

    def spoken(self, screen):
        return [text for program in screen.programs("gnome-shell") for node in program.descendants()
                for text in (node.name, node.description) if text]


class _Session:
    def __init__(self, desktop, processes, home, log):
        self.environment = desktop.environment | {"XDG_SESSION_TYPE": "wayland"}
        self.bus = desktop.bus
        self._processes, self._log, self._visits = processes, log, home / "gnome" / "visited"

    def run(self, command):
        return self._processes.start_quietly(command, self.environment, self._log)

    def visited(self):
        return self._visits.read_text().splitlines() if self._visits.exists() else []


class _Display:
    def __init__(self, desktop, home):
        self._desktop, self._hands, self._shot = desktop, Hands(desktop), home / "shot.png"

    def grab(self, part=None):
        self._desktop.screenshot(self._shot)
        picture = Picture.read(self._shot)
        if part is None:
            return picture
        return Picture(part.width, part.height,
                       b"".join(picture.row(y, part.x, part.width) for y in range(part.y, part.y + part.height)))

    def point(self, x, y):
        self._desktop.evaluate(f"global.demoHands.point({int(x)}, {int(y)})")
        watch(lambda: self._desktop.evaluate("global.get_pointer().slice(0, 2)") == [int(x), int(y)], "the pointer")

    def press(self):
        self._desktop.evaluate("global.demoHands.click()")

    def key(self, name):
        self._hands.press(_KEYS[name])

    def dismiss(self):
        self.key("Escape")


class _Menu:
    """The menu as the shell has drawn it: its actors."""

    def __init__(self, desktop, display):
        self._desktop, self._display = desktop, display

    def open(self, dot):
        watch(lambda: self._ask("menu.numMenuItems"), "the shell to have read the menu")
        self._display.point(*dot.middle)
        clicked = GLib.get_monotonic_time()
        self._display.press()
        watch(self.is_open, "the menu after a click")
        return (GLib.get_monotonic_time() - clicked) / 1000

    def is_open(self):
        return bool(self._ask("menu.isOpen"))

    def rows(self):
        texts = self._ask("menu._getMenuItems().filter(item => item.visible)"
                          ".map(item => item.label?.visible ? item.label.text : null)") or []
        return [DIVIDER if text is None else text for text in texts]

    def row_area(self, text):
        return Rectangle(*map(round, watch(lambda: self._place(text), f"{text!r} to have a place")))

    def _place(self, text):
        """Nothing before the shell has laid the row out."""
        place = self._desktop.evaluate(
            f"(row => [...row.get_transformed_position(), ...row.get_transformed_size()])({_row(text)})")
        return None not in place and place

    def choose(self, text):
        watch(lambda: self._takes_clicks() and self._is_pointed_at(text), f"the pointer to be on {text!r}")
        self._display.press()
        watch(lambda: not self.is_open(), f"the menu to close after a click on {text!r}")

    def _takes_clicks(self):
        """While a menu opens, the shell already tells rows what points at them, but swallows every click. Without
        animations that is one frame, which a busy machine may be long about."""
        return self._ask("menu.actor._muteInput === false")

    def _is_pointed_at(self, text):
        return self._desktop.evaluate(f"global.demoHands.pointAt({_row(text)})")

    def close(self):
        self._display.dismiss()
        watch(lambda: not self.is_open(), "the menu to close")

    def _ask(self, what):
        try:
            return self._desktop.evaluate(f"({_INDICATOR})?.{what}")
        except NotYet:
            return None


def _row(text):
    return f"({_INDICATOR}).menu._getMenuItems().find(item => item.label?.text === {json.dumps(text)})"
