#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""A status area as a desktop has one, for tests: the watcher that items register with, a reader of the item,
and the menu as libdbusmenu's client sees it. Built on GLib alone, so that it shares nothing with the program.

As a module: StatusHost. As a program: one JSON request a line on standard input, {"call": name, "with":
[arguments]}, one JSON answer a line on standard output, {"value": …} or {"failure": text}. With "--check" it only
tells by its exit code whether it has what it needs.
"""

import base64
import json
import sys
import time

import gi

gi.require_version("Dbusmenu", "0.4")
from gi.repository import Dbusmenu, Gio, GLib  # noqa: E402

ITEM = "org.kde.StatusNotifierItem"
MENU = "com.canonical.dbusmenu"
PROPERTIES = "org.freedesktop.DBus.Properties"
WATCHER = "org.kde.StatusNotifierWatcher"
WATCHER_PATH = "/StatusNotifierWatcher"
WATCHER_XML = """
<node>
  <interface name="org.kde.StatusNotifierWatcher">
    <method name="RegisterStatusNotifierItem"><arg name="service" type="s" direction="in"/></method>
    <method name="RegisterStatusNotifierHost"><arg name="service" type="s" direction="in"/></method>
    LIST
    <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
    <property name="ProtocolVersion" type="i" access="read"/>
    <signal name="StatusNotifierItemRegistered"><arg name="service" type="s"/></signal>
    <signal name="StatusNotifierItemUnregistered"><arg name="service" type="s"/></signal>
    <signal name="StatusNotifierHostRegistered"/>
  </interface>
</node>
"""
LIST_XML = '<property name="RegisteredStatusNotifierItems" type="as" access="read"/>'


def plain(variant):
    """A variant as JSON can hold it; bytes become base64."""
    kind = variant.get_type_string()
    if kind == "v":
        return plain(variant.get_variant())
    if kind == "ay":
        return base64.b64encode(bytes(variant.unpack())).decode()
    if kind == "a{sv}":
        return {key: plain(value) for key, value in dictionary(variant).items()}
    if variant.is_container():
        return [plain(variant.get_child_value(i)) for i in range(variant.n_children())]
    return variant.unpack()


def dictionary(variant):
    """The entries of an a{sv}, values still as variants."""
    entries = [variant.get_child_value(i) for i in range(variant.n_children())]
    return {e.get_child_value(0).get_string(): e.get_child_value(1).get_variant() for e in entries}


def _text_told(member, arguments):
    """The item's text, where the signal tells it."""
    if member == "XAyatanaNewLabel":
        return arguments.get_child_value(0).get_string()
    if member == "PropertiesChanged":
        return arguments.unpack()[1].get("XAyatanaLabel")
    return None


class StatusHost:
    """One host on the session bus of this process."""

    def __init__(self):
        self.bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        self.bus.set_exit_on_close(False)
        self.registrations = []  # [sender, service] as registered, oldest first
        self.refusals = 0  # how many registrations to come are answered with an error
        self.losses = 0  # how many after these are answered and forgotten
        self.looks_before = 0  # how many looks at the list it takes until an item stands in it
        self.delay = 0  # milliseconds from the answer to the listing
        self.form = "{name}{path}"  # of an entry in the list; None for a watcher that keeps no list
        self.standstill = 0.0  # seconds for which the next look at the list stops this host
        self.listed = []
        self.signals = []  # {"member", "arguments"} of item and menu, oldest first, less the reminders
        self.reminders = []  # when XAyatanaNewLabel told the text that was known already
        self.ears_after = 0  # milliseconds from the listing until the text is drawn at its signals
        self.drawn_text = {}  # by signal; None where it was not heard
        self._watcher = None
        self._client = None
        self._subscriptions = []
        self._late = None
        self._item = None

    # The watcher

    def start_watcher(self, gnome=False):
        """Appears on the bus; as GNOME Shell does, if so wished."""
        if self._watcher is None:
            xml = WATCHER_XML.replace("LIST", LIST_XML if self.form else "")
            interface = Gio.DBusNodeInfo.new_for_xml(xml).interfaces[0]
            self._watcher = self.bus.register_object(
                WATCHER_PATH, interface, self._watcher_called, self._watcher_property, None)
        if gnome:
            self.own("org.gnome.Shell")
        self.own(WATCHER)

    def stop_watcher(self):
        """Disappears, as a panel that ends does."""
        self.listed.clear()
        self.disown(WATCHER)
        self.disown("org.gnome.Shell")

    def own(self, name):
        self._ask_bus("RequestName", GLib.Variant("(su)", (name, 1 | 2 | 4)))

    def disown(self, name):
        self._ask_bus("ReleaseName", GLib.Variant("(s)", (name,)))

    def refuse_registrations(self, count):
        self.refusals = count

    def set(self, name, value):
        """One of the traits above; the form of the list is read when the watcher starts."""
        setattr(self, name, value)

    def get(self, name):
        return getattr(self, name)

    def registered(self):
        return self.registrations

    def _ask_bus(self, method, arguments):
        return self.bus.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", method,
                                  arguments, None, Gio.DBusCallFlags.NONE, 5000, None)

    def _watcher_called(self, _bus, sender, _path, _interface, method, arguments, invocation):
        if method == "RegisterStatusNotifierItem":
            if self.refusals > 0:
                self.refusals -= 1
                invocation.return_dbus_error("org.freedesktop.DBus.Error.UnknownObject", "not yet")
                return
            service = arguments.unpack()[0]
            self.registrations.append([sender, service])
            if self.losses > 0:
                self.losses -= 1
            elif self.looks_before > 0:
                self._late = [sender, service]
            elif self.delay:
                GLib.timeout_add(self.delay, self._list, sender, service)
            else:
                self._list(sender, service)
        invocation.return_value(None)

    def _list(self, sender, service):
        path = service if service.startswith("/") else "/StatusNotifierItem"
        entry = (self.form or "").format(name=sender, path=path)
        if entry in self.listed:
            return GLib.SOURCE_REMOVE
        self.listed.append(entry)
        self._follow(sender, path)
        self.bus.emit_signal(None, WATCHER_PATH, WATCHER, "StatusNotifierItemRegistered", GLib.Variant("(s)", (entry,)))
        return GLib.SOURCE_REMOVE

    def _watcher_property(self, _bus, _sender, _path, _interface, name):
        if name == "RegisteredStatusNotifierItems":
            standstill, self.standstill = self.standstill, 0.0
            time.sleep(standstill)
            self.looks_before -= 1
            if self.looks_before == 0:
                self._list(*self._late)
        return {
            "RegisteredStatusNotifierItems": GLib.Variant("as", self.listed),
            "IsStatusNotifierHostRegistered": GLib.Variant("b", True),
            "ProtocolVersion": GLib.Variant("i", 0),
        }[name]

    # The item that registered last

    def _follow(self, sender, path):
        for subscription in self._subscriptions:
            self.bus.signal_unsubscribe(subscription)
        self._item = (sender, path)
        self._client = None
        self._subscriptions = [
            self.bus.signal_subscribe(sender, interface, None, None, None, Gio.DBusSignalFlags.NONE, self._signalled)
            for interface in (ITEM, MENU, PROPERTIES)]
        self._text, self.drawn_text = None, {}
        self._ask("Get", GLib.Variant("(ss)", (ITEM, "XAyatanaLabel")), self._read_text)
        GLib.timeout_add(self.ears_after, self._listen, sender)

    def _ask(self, method, arguments, then):
        """Reads from the item without waiting; an answer comes before the signals that were sent after it."""
        def answered(bus, result):
            try:
                then(bus.call_finish(result).get_child_value(0))
            except GLib.Error:
                pass  # the item has gone

        self.bus.call(*self._item, PROPERTIES, method, arguments, None, Gio.DBusCallFlags.NONE, -1, None, answered)

    def _read_text(self, answer):
        self._text = answer.get_variant().get_string()

    def _listen(self, sender):
        def heard(_bus, _sender, _path, _interface, member, arguments):
            if (text := _text_told(member, arguments)) is not None:
                self.drawn_text[member] = text

        for interface in (ITEM, PROPERTIES):
            self._subscriptions.append(self.bus.signal_subscribe(
                sender, interface, None, None, None, Gio.DBusSignalFlags.NONE, heard))
        return GLib.SOURCE_REMOVE

    def _signalled(self, _bus, _sender, _path, _interface, member, arguments):
        if (text := _text_told(member, arguments)) is not None:
            known, self._text = self._text, text
            if text == known:
                self.reminders += [time.monotonic()] if member == "XAyatanaNewLabel" else []
                return
        self.signals.append({"member": member, "arguments": plain(arguments)})

    def property(self, name):
        """[signature, value] of a property of the item."""
        sender, path = self._item
        value = self.call(path, PROPERTIES, "Get", f"('{ITEM}', '{name}')").get_child_value(0).get_variant()
        return [value.get_type_string(), plain(value)]

    def properties(self):
        """{name: [signature, value]} of all properties of the item."""
        _, path = self._item
        every = dictionary(self.call(path, PROPERTIES, "GetAll", f"('{ITEM}',)").get_child_value(0))
        return {name: [value.get_type_string(), plain(value)] for name, value in every.items()}

    def call(self, path, interface, method, arguments="()"):
        """Any call to the program behind the item, arguments as GVariant text; raises GLib.Error on an error."""
        return self.bus.call_sync(self._item[0], path, interface, method, GLib.Variant.parse(None, arguments, None, None),
                                  None, Gio.DBusCallFlags.NONE, 10000, None)

    def answer(self, path, interface, method, arguments="()"):
        """The same as plain values: {"value": …} or {"error": the D-Bus error's name}."""
        try:
            return {"value": plain(self.call(path, interface, method, arguments))}
        except GLib.Error as error:
            return {"error": Gio.DBusError.get_remote_error(error) or error.message}

    def call_menu(self, method, arguments="()"):
        return self.answer(self.property("Menu")[1], MENU, method, arguments)

    def call_item(self, method, arguments="()"):
        return self.answer(self._item[1], ITEM, method, arguments)

    def introspection(self):
        return plain(self.call(self._item[1], "org.freedesktop.DBus.Introspectable", "Introspect"))[0]

    def take_signals(self):
        """The signals since the last time, all that were sent before this call."""
        self.property("Id")  # the answer comes behind whatever the program sent before
        drain()
        taken, self.signals = self.signals, []
        return taken

    # The menu through libdbusmenu

    def menu(self):
        """The rows as libdbusmenu's client knows them now, None until it has them all."""
        if self._client is None:
            self._client = Dbusmenu.Client.new(self._item[0], self.property("Menu")[1])
        drain()
        root = self._client.get_root()
        if root is None:
            return None
        rows = [self._row(child) for child in root.get_children()]
        return None if any(row["label"] is None for row in rows) else rows

    def forget_menu(self):
        """Reads the menu anew next time, as a panel does that starts."""
        self._client = None

    @staticmethod
    def _row(item):
        return {
            "id": item.get_id(),
            "type": item.property_get("type"),
            "label": item.property_get("label"),
            "enabled": item.property_get_bool("enabled"),
            "visible": item.property_get_bool("visible"),
        }

    def wait_for_menu(self, fits=lambda rows: True, seconds=10):
        """The rows, once they are there and fit."""
        return self.wait_for(lambda: (rows := self.menu()) is not None and fits(rows) and rows, seconds)

    def click(self, item_id):
        """A click, sent as libdbusmenu's client sends it."""
        item = self._client.get_root().find_id(item_id)
        item.handle_event("clicked", GLib.Variant("i", 0), int(time.time()) & 0xFFFFFFFF)
        drain()

    @staticmethod
    def wait_for(condition, seconds=10):
        """The condition's value, once it is true; TimeoutError if that takes too long."""
        context = GLib.MainContext.default()
        deadline = GLib.get_monotonic_time() + int(seconds * 1e6)
        wake_up = GLib.timeout_add(20, lambda: True)
        try:
            while not (value := condition()):
                if GLib.get_monotonic_time() > deadline:
                    raise TimeoutError("the condition did not come true in time")
                context.iteration(True)
            return value
        finally:
            GLib.source_remove(wake_up)


def drain():
    """Handles what has arrived."""
    context = GLib.MainContext.default()
    while context.pending():
        context.iteration(False)


def serve():
    """Answers requests until standard input ends."""
    host = StatusHost()
    loop = GLib.MainLoop()

    def request(_fd, condition):
        line = sys.stdin.readline()
        if not line:
            loop.quit()
            return GLib.SOURCE_REMOVE
        wish = json.loads(line)
        try:
            answer = {"value": getattr(host, wish["call"])(*wish.get("with", []))}
        except Exception as error:  # the test that asked decides what it means
            answer = {"failure": f"{type(error).__name__}: {error}"}
        print(json.dumps(answer), flush=True)
        return GLib.SOURCE_CONTINUE

    GLib.unix_fd_add_full(GLib.PRIORITY_DEFAULT, 0, GLib.IOCondition.IN | GLib.IOCondition.HUP, request)
    loop.run()


if __name__ == "__main__" and "--check" not in sys.argv:
    serve()
