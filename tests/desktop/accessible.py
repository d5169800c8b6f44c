# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""What a screen reader finds on the screen, read from the accessibility bus without any toolkit's help."""

from gi.repository import Gio, GLib

from picture import Rectangle

_ACCESSIBLE = "org.a11y.atspi.Accessible"
_COMPONENT = "org.a11y.atspi.Component"
_PROPERTIES = "org.freedesktop.DBus.Properties"
_REGISTRY = ("org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root")
_ACTIVE, _FOCUSED, _SHOWING, _VISIBLE = 1, 12, 25, 30


def bus_address(session_bus):
    return session_bus.call_sync("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress", None, None,
                                 Gio.DBusCallFlags.NONE, 20000, None).unpack()[0]


class Node:
    """One object of the tree, as it is now. What has gone meanwhile is nameless and childless."""

    def __init__(self, bus, name, path):
        self._bus, self.owner, self.path = bus, name, path

    def __repr__(self):
        return f"{self.role} {self.name!r}{' showing' if self.is_showing else ''}"

    @property
    def name(self):
        return self._property("Name") or ""

    @property
    def description(self):
        return self._property("Description") or ""

    @property
    def role(self):
        return (self._call(_ACCESSIBLE, "GetRoleName") or ("",))[0]

    @property
    def is_showing(self):
        return self._has_state(_SHOWING)

    @property
    def is_active(self):
        return self._has_state(_ACTIVE)

    @property
    def is_focused(self):
        return self._has_state(_FOCUSED)

    @property
    def extents(self):
        """On the screen where the window system tells its windows where they are, in the window elsewhere."""
        found = self._call(_COMPONENT, "GetExtents", GLib.Variant("(u)", (0,)))
        return Rectangle(*found[0]) if found else Rectangle(0, 0, 0, 0)

    @property
    def parent(self):
        parent = self._property("Parent")
        return Node(self._bus, *parent) if parent else None

    @property
    def children(self):
        return [Node(self._bus, *child) for child in (self._call(_ACCESSIBLE, "GetChildren") or ([],))[0]]

    def descendants(self):
        for child in self.children:
            yield child
            yield from child.descendants()

    def shown_descendants(self):
        """Without tooltips that wait or have been there: Cinnamon and Plasma have them in the tree."""
        for child in self.children:
            if child.is_showing:
                yield child
                yield from child.shown_descendants()

    def _has_state(self, state):
        low, high = (self._call(_ACCESSIBLE, "GetState") or ((0, 0),))[0]
        return bool((high << 32 | low) >> state & 1)

    def _property(self, name):
        found = self._call(_PROPERTIES, "Get", GLib.Variant("(ss)", (_ACCESSIBLE, name)))
        return found and found[0]

    def _call(self, interface, method, arguments=None):
        try:
            return self._bus.call_sync(self.owner, self.path, interface, method, arguments, None,
                                       Gio.DBusCallFlags.NONE, 5000, None).unpack()
        except GLib.Error:
            return None


class AccessibleScreen:
    """The tree, and the events by which objects that stand in no tree make themselves known, as menus do."""

    def __init__(self, session_bus):
        flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
        self._bus = Gio.DBusConnection.new_for_address_sync(bus_address(session_bus), flags, None, None)
        self._shown = {}  # (owner, path) of what has come to show, and when
        self._bus.signal_subscribe(None, "org.a11y.atspi.Event.Object", "StateChanged", None, None,
                                   Gio.DBusSignalFlags.NONE, self._state_changed)
        for event in ("object:state-changed:showing", "object:state-changed:focused"):
            self._bus.call_sync(_REGISTRY[0], "/org/a11y/atspi/registry", _REGISTRY[0], "RegisterEvent",
                                GLib.Variant("(sass)", (event, [], "")), None, Gio.DBusCallFlags.NONE, 20000, None)

    def _state_changed(self, _bus, owner, path, _interface, _member, arguments):
        state, is_set, *_ = arguments.unpack()
        if state == "showing" and not is_set:
            self._shown.pop((owner, path), None)
        elif state in ("showing", "focused") and is_set:
            self._shown[owner, path] = GLib.get_monotonic_time()

    def shown(self):
        return [Node(self._bus, *key) for key in self._shown]

    def forget_shown(self):
        self._shown.clear()

    def first_shown(self):
        """When the first of what shows now came, in microseconds of the monotonic clock."""
        return min(self._shown.values())

    def programs(self, *names):
        """The programs with these names, or all."""
        found = Node(self._bus, *_REGISTRY).children
        return [program for program in found if not names or program.name in names]

    def window(self, title):
        return next((window for program in self.programs() for window in program.children if window.name == title),
                    None)

    def tree(self):
        """All of it as text, for whoever looks for something."""
        lines = []

        def add(node, depth):
            lines.append("  " * depth + repr(node))
            for child in node.children:
                add(child, depth + 1)

        for program in self.programs():
            add(program, 0)
        return "\n".join(lines)
