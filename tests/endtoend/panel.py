# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""The panel as the user sees it: what stands in the bar, and the rows of the menu."""

import base64
import re

from gi.repository import GLib

from events import Failure, expect, wait_until
from figures import DIVIDER
from status_host import StatusHost

# libdbusmenu warns when a program ends that still owes it an answer; here programs end all the time.
GLib.log_set_handler("LIBDBUSMENU-GLIB", GLib.LogLevelFlags.LEVEL_WARNING, lambda *_: None, None)


class Panel:
    """Shows the item of the program that was started last."""

    def __init__(self):
        self._host = StatusHost()
        self._host.start_watcher()
        self.forget()

    def forget(self):
        """As before any program has started."""
        self._host.registrations.clear()
        self._host.signals.clear()
        self.titles = []  # as seen one after the other

    def wait_for_title(self, title):
        """Waits until the item shows it: as the tool tip's title, and as dot and text side by side."""
        wait_until(lambda: self._title() == title, lambda: f"the title {title!r}; there were {self.titles}")
        dot, text = title.split(" ")
        expect(self._read("XAyatanaLabel"), text, f"The text beside the icon with the title {title}")
        for width, height, pixels in self._read("IconPixmap"):
            middle = 4 * (height // 2 * width + width // 2)
            alpha, *colour = base64.b64decode(pixels)[middle:middle + 4]
            if alpha < 255 or _nearest_dot(*colour) != dot:
                raise Failure(f"The middle of the {width}×{height} icon is {(alpha, *colour)}, not {dot}.")

    def wait_for_rows(self, rows):
        wait_until(lambda: self.rows() == rows, lambda: f"the rows {rows}; the menu has {self.rows()}")

    def rows(self):
        """The menu's texts as a user reads them."""
        return [_text(row) for row in self._menu()]

    def icon_name(self):
        """For panels that look icons up; empty where they are to take the pixels."""
        return self._read("IconName")

    def row_ids(self):
        return [row["id"] for row in self._menu()]

    def click(self, text):
        """Clicks the row once it is there."""
        wait_until(lambda: text in self.rows(), lambda: f"the row {text!r}; the menu has {self.rows()}")
        self._host.click(next(row["id"] for row in self._menu() if _text(row) == text))

    def open_menu(self):
        """Tells the program, as a panel does, that the user looks at the menu."""
        self._host.call_menu("AboutToShow", "(0,)")
        self._host.call_menu("Event", "(0, 'opened', <0>, uint32 0)")

    def hover(self, text):
        """The pointer rests on the row."""
        row = next(row["id"] for row in self._menu() if _text(row) == text)
        self._host.call_menu("Event", f"({row}, 'hovered', <0>, uint32 0)")

    def ask_for_menu(self):
        """As panels do that leave its drawing to the program."""
        self._host.call_item("ContextMenu", "(600, 400)")

    def _menu(self):
        return self._host.menu() or [] if self._host.registered() else []

    def _title(self):
        if not self._host.registered():
            return None
        try:
            title = self._read("ToolTip")[2]
        except GLib.Error:  # the program has gone
            return None
        if title not in self.titles[-1:]:
            self.titles.append(title)
        return title

    def _read(self, name):
        return self._host.property(name)[1]


def _text(row):
    if row["type"] == "separator":
        return DIVIDER
    return re.sub("_(.)", r"\1", row["label"])  # one alone marks a keyboard shortcut and is not shown


def _nearest_dot(red, green, blue):
    if min(red, green, blue) > 150:
        return "⚪"
    return "🔴" if red > green else "🟢"
