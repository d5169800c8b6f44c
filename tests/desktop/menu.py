# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""The open menu as a screen reader finds it."""

from gi.repository import GLib

from figures import DIVIDER
from patience import watch
from picture import Rectangle

_LAST_ROW = "Quit Vantelo"
_ROWS = ("menu item", "separator", "label")


class AccessibleMenu:
    """Works for every toolkit that tells of its menus, wherever their windows stand."""

    def __init__(self, screen, display):
        self._screen, self._display = screen, display

    def open(self, dot):
        """Clicks the dot; gives the milliseconds until the menu began to show."""
        self._screen.forget_shown()
        self._display.point(*dot.middle)
        self._closed = self._display.grab()
        clicked = GLib.get_monotonic_time()
        self._display.press()
        watch(self.is_open, "the menu after a click")
        return (self._screen.first_shown() - clicked) / 1000

    def is_open(self):
        return self._menu() is not None

    def rows(self):
        menu = self._menu()
        return [_text(row) for row in _rows_of(menu)] if menu else []

    def area(self):
        return self._display.area_of(self._menu(), self._closed)

    def row_area(self, text):
        menu, area = self._menu(), self.area()
        row = next(row for row in _rows_of(menu) if row.name == text).extents
        inside = menu.extents
        return Rectangle(area.x + row.x - inside.x, area.y + row.y - inside.y, row.width, row.height)

    def choose(self, text):
        middle = self.row_area(text).middle
        self._display.point(*middle)
        self._display.press()
        watch(lambda: not self.is_open(), f"the menu to close after a click on {text!r}")

    def close(self):
        self._display.dismiss()
        watch(lambda: not self.is_open(), "the menu to close")

    def _menu(self):
        for node in self._screen.shown():
            menu = node if "menu" in node.role and node.role != "menu item" else node.parent
            if menu and any(row.name == _LAST_ROW and row.is_showing for row in menu.children):
                return menu
        return None


def _rows_of(menu):
    return [row for row in menu.children if row.role in _ROWS]


def _text(row):
    return DIVIDER if row.role == "separator" or not row.name else row.name
