# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT

import json
import os
from functools import cached_property
from pathlib import Path

from gi.repository import GLib

import namespace
from demo.stage.desktop import EXTENSION, SIZE, Desktop, is_owned, missing_packages
from demo.stage.hands import ESCAPE, SPACE, TAB, Hands
from demo.stage.processes import NotYet, Processes
from figures import DIVIDER
from look import Look
from patience import watch
from picture import Picture, Rectangle
from session import browser_in

_KEYS = {"Tab": TAB, "space": SPACE, "Escape": ESCAPE, "Return": 0xFF0D}
_INDICATOR = """Object.entries(Main.panel.statusArea).find(([name]) => name.includes('NotificationItem/vantelo'))?.[1]"""

# The test clicks quicker than a user, and the extension takes two clicks on its item for a double click; and its pointer
# jumps, over a corner at times.
_MANNERS = """
const settings = imports.gi.Clutter.Settings.get_default?.() ?? global.stage.get_context().get_settings();
settings.double_click_time = 1;
new imports.gi.Gio.Settings({schema_id: 'org.gnome.desktop.interface'}).set_boolean('enable-hot-corners', false);
null;
"""


class Host:
    """The panel of GNOME Shell is the shell, and on Wayland nothing outlives it; what can go and come again is the
    extension that shows items."""

    name = "GNOME Shell with AppIndicator"
    folder = Path(__file__).parents[1]
    programs = ["gnome-shell", *missing_packages()]
    has_panel = True
    cannot = {}
    look = Look()

    @property
    def text_beside(self):
        return "left" if self.look.right_to_left else "right"

    @property
    def opacity(self):
        return (self._desktop.evaluate(f"({_INDICATOR})?.opacity ?? null") or 255) / 255

    @property
    def nowhere(self):
        return tuple(self.look.scale * side - 1 for side in SIZE)

    def open(self, log, look=None):
        self.look = look or self.look
        home = namespace.private_folder("home")
        os.environ["PATH"] = f"{browser_in(home)}:{os.environ['PATH']}"
        processes = Processes().__enter__()  # they end with the namespace
        desktop = Desktop(processes, home / "gnome", log, self.look.scale, "ar" if self.look.right_to_left else "")
        if self.look.right_to_left:
            desktop.environment["CLUTTER_TEXT_DIRECTION"] = "rtl"  # newer translations of the shell's do not tell it
        desktop.open()
        self.session = _Session(desktop, processes, home, log)
        self.display = _Display(desktop, home)
        self._desktop = desktop
        desktop.evaluate(_MANNERS)
        self.kill_panel()  # until start_panel()

    def start_panel(self):
        self._desktop.evaluate(f"Main.extensionManager.enableExtension('{EXTENSION}'); null")

    def kill_panel(self):
        self._desktop.evaluate(f"Main.extensionManager.disableExtension('{EXTENSION}'); null")

    def drawn_text(self):
        """What stands beside the dot; None where nothing does."""
        return self._desktop.evaluate(f"({_INDICATOR})?._label?.get_text() ?? null")

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

    def has_name(self, name):
        return is_owned(self.bus, name)

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

    @cached_property
    def scale(self):
        """Pixels of a picture for one of the shell's units: the factor where the shell lays out at 100 %, else 1."""
        return self.grab().width / self._desktop.evaluate("global.screen_width")

    def point(self, x, y):
        place = [int(x / self.scale), int(y / self.scale)]

        def is_there():
            self._desktop.evaluate(f"global.demoHands.point({place[0]}, {place[1]})")  # GNOME 51 drops half of the first
            return self._desktop.evaluate("global.get_pointer().slice(0, 2)") == place

        watch(is_there, "the pointer")

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
        place = watch(lambda: self._place(text), f"{text!r} to have a place")
        return Rectangle(*(round(self._display.scale * side) for side in place))

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
        mutes = "menu.actor._muteInput"  # a gesture on GNOME 51
        return self._ask(f"{mutes} === false") or self._ask(f"{mutes}.enabled === false")

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
