# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT

"""What a screen reader would find in the program's windows."""

from gi.repository import Gio, GLib

from .desktop import call

_PROPERTIES = 'org.freedesktop.DBus.Properties'
_ACCESSIBLE = 'org.a11y.atspi.Accessible'
_ROOT = '/org/a11y/atspi/accessible/root'
_FOCUSED = 1 << 12
_SHOWING = 1 << 25


class ScreenReader:
    def __init__(self, desktop):
        address = call(desktop.bus, 'org.a11y.Bus', '/org/a11y/bus', 'org.a11y.Bus', 'GetAddress')[0]
        flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
        self._bus = Gio.DBusConnection.new_for_address_sync(address, flags, None, None)

    def texts(self, title):
        """All that shows in the window, in its own order. A label has the name of its control and counts once."""
        return list(dict.fromkeys(
            name for name, states in self._nodes_of_window(title) if name and states & _SHOWING))

    def focused(self, title):
        """The name of what has the keyboard's focus in the window, or None."""
        return next((name for name, states in self._nodes_of_window(title) if states & _FOCUSED), None)

    def _nodes_of_window(self, title):
        for program in self._children(('org.a11y.atspi.Registry', _ROOT)):
            if not self._name(program).startswith('gnome-shell'):
                for window in self._children(program):
                    if self._name(window) == title:
                        yield from self._nodes(window)

    def _nodes(self, node):
        for child in self._children(node):
            yield self._name(child), self._states(child)
            yield from self._nodes(child)

    def _children(self, node):
        return call(self._bus, *node, _ACCESSIBLE, 'GetChildren')[0]

    def _name(self, node):
        return call(self._bus, *node, _PROPERTIES, 'Get', GLib.Variant('(ss)', (_ACCESSIBLE, 'Name')))[0]

    def _states(self, node):
        low, high = call(self._bus, *node, _ACCESSIBLE, 'GetState')[0]
        return high << 32 | low
