# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""The program's item on the session bus, whatever host shows it."""

from gi.repository import Gio, GLib

_PATH = "/org/ayatana/NotificationItem/vantelo"
_DBUS = "org.freedesktop.DBus"
_MENU = "com.canonical.dbusmenu"


class Item:
    def __init__(self, bus, pid):
        self._bus, self._pid, self._owner = bus, pid, None

    def label(self):
        """The dot's symbol, one blank, the text; empty while there is no item."""
        tool_tip = self._get("ToolTip")
        return tool_tip[2] if tool_tip else ""

    def choose(self, text):
        """What a click on the row does, without any host."""
        layout = self._call(self._owner, f"{_PATH}/Menu", _MENU, "GetLayout", "(iias)", 0, -1, [])
        number = next(row[0] for row in layout[1][2] if row[1]["label"] == text)
        self._call(self._owner, f"{_PATH}/Menu", _MENU, "Event", "(isvu)", number, "clicked", GLib.Variant("i", 0), 0)

    def _get(self, name):
        self._owner = self._owner or next(filter(self._is_ours, self._names()), None)
        if not self._owner:
            return None
        found = self._call(self._owner, _PATH, f"{_DBUS}.Properties", "Get", "(ss)", "org.kde.StatusNotifierItem", name)
        return found and found[0]

    def _names(self):
        return [name for name in self._call(_DBUS, "/", _DBUS, "ListNames", "()")[0] if name.startswith(":")]

    def _is_ours(self, name):
        pid = self._call(_DBUS, "/", _DBUS, "GetConnectionUnixProcessID", "(s)", name)
        return pid == (self._pid,) and self._call(name, _PATH, f"{_DBUS}.Peer", "Ping", "()") is not None and bool(
            self._call(name, _PATH, f"{_DBUS}.Properties", "Get", "(ss)", "org.kde.StatusNotifierItem", "Id"))

    def _call(self, name, path, interface, method, signature, *arguments):
        try:
            return self._bus.call_sync(name, path, interface, method, GLib.Variant(signature, arguments), None,
                                       Gio.DBusCallFlags.NONE, 10000, None).unpack()
        except GLib.Error:
            return None
