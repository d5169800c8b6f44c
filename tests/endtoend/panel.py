# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""A panel as the program meets it: it hosts the status item and opens its menu, by way of libdbusmenu's client."""

import gi

gi.require_version("Dbusmenu", "0.4")
from gi.repository import Dbusmenu, Gio, GLib

from events import Failure, wait_until
from figures import DIVIDER

_ITEM = "org.kde.StatusNotifierItem"
_WATCHER = Gio.DBusNodeInfo.new_for_xml("""<node><interface name="org.kde.StatusNotifierWatcher">
  <method name="RegisterStatusNotifierItem"><arg name="service" type="s" direction="in"/></method>
  <method name="RegisterStatusNotifierHost"><arg name="service" type="s" direction="in"/></method>
  <property name="RegisteredStatusNotifierItems" type="as" access="read"/>
  <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
  <property name="ProtocolVersion" type="i" access="read"/>
</interface></node>""").interfaces[0]

# The client warns when a program ends that still owes it an answer; here programs end all the time.
GLib.log_set_handler("LIBDBUSMENU-GLIB", GLib.LogLevelFlags.LEVEL_WARNING, lambda *_: None, None)


class Panel:
    """Shows one item at a time, the one registered last."""

    def __init__(self, address):
        flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
        self._bus = Gio.DBusConnection.new_for_address_sync(address, flags, None, None)
        self._bus.register_object("/StatusNotifierWatcher", _WATCHER, self._on_call, self._on_read, None)
        Gio.bus_own_name_on_connection(self._bus, "org.kde.StatusNotifierWatcher", 0, None, None)
        self._subscription = None
        self.forget()

    def forget(self):
        """As before any program has started."""
        if self._subscription:
            self._bus.signal_unsubscribe(self._subscription)
        self._subscription = self._owner = self._path = self._menu = None
        self.titles = []  # each title that stood in the bar, oldest first

    def wait_for_title(self, title):
        """Waits until the item shows it: as the tool tip's title, and as dot and text side by side."""
        wait_until(lambda: self.titles and self.titles[-1] == title,
                   lambda: f"the title {title!r}; there were {self.titles}")
        self._check_dot_and_text(title)

    def wait_for_rows(self, rows):
        wait_until(lambda: self.rows() == rows, lambda: f"the rows {rows}; the menu has {self.rows()}")

    def rows(self):
        """The menu's texts as a user reads them."""
        return [_text(item) for item in self._items()]

    def row_ids(self):
        return [item.get_id() for item in self._items()]

    def click(self, row):
        """Clicks the row once it is there."""
        wait_until(lambda: row in self.rows(), lambda: f"the row {row!r}; the menu has {self.rows()}")
        item = next(item for item in self._items() if _text(item) == row)
        item.handle_event("clicked", GLib.Variant("i", 0), 0)

    def _items(self):
        root = self._menu.get_root() if self._menu else None
        return root.get_children() if root else []

    def _check_dot_and_text(self, title):
        dot, text = title.split(" ")
        shown = self._read("XAyatanaLabel")
        if shown != text:
            raise Failure(f"The text beside the icon is {shown!r} with the title {title!r}.")
        for width, height, pixels in self._read("IconPixmap"):
            middle = 4 * (height // 2 * width + width // 2)
            alpha, red, green, blue = pixels[middle:middle + 4]
            if alpha < 255 or _nearest_dot(red, green, blue) != dot:
                raise Failure(f"The middle of the {width}×{height} icon is {(alpha, red, green, blue)}, not {dot}.")

    def _on_call(self, _bus, sender, _path, _interface, method, arguments, invocation):
        if method == "RegisterStatusNotifierItem":
            self._adopt(sender, arguments.unpack()[0])
        invocation.return_value(None)

    def _on_read(self, _bus, _sender, _path, _interface, name):
        return {"RegisteredStatusNotifierItems": GLib.Variant("as", []), "ProtocolVersion": GLib.Variant("i", 0),
                "IsStatusNotifierHostRegistered": GLib.Variant("b", True)}[name]

    def _adopt(self, owner, path):
        self.forget()
        self._owner, self._path = owner, path
        self._subscription = self._bus.signal_subscribe(owner, _ITEM, "NewToolTip", path, None, 0,
                                                        lambda *_: self._read_title())
        self._menu = Dbusmenu.Client.new(owner, self._read("Menu"))
        self._read_title()

    def _read_title(self):
        title = self._read("ToolTip")[2]
        if title not in self.titles[-1:]:
            self.titles.append(title)

    def _read(self, name):
        reply = self._bus.call_sync(self._owner, self._path, "org.freedesktop.DBus.Properties", "Get",
                                    GLib.Variant("(ss)", (_ITEM, name)), None, 0, 5000, None)
        return reply.unpack()[0]


def _text(item):
    if item.property_get("type") == "separator":
        return DIVIDER
    return (item.property_get("label") or "").replace("__", "_")  # a single one would mark a keyboard shortcut


def _nearest_dot(red, green, blue):
    if min(red, green, blue) > 150:
        return "⚪"
    return "🔴" if red > green else "🟢"
