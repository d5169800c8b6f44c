# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""NetworkManager as programs know it, on a system bus of its own."""

import subprocess

from gi.repository import Gio, GLib

import namespace
from events import Failure, something_happened

NAME, PATH = "org.freedesktop.NetworkManager", "/org/freedesktop/NetworkManager"
ASLEEP, DISCONNECTED, CONNECTING, LOCAL, SITE, ONLINE, UNKNOWN = 10, 20, 40, 50, 60, 70, 0
_INTERFACE = Gio.DBusNodeInfo.new_for_xml(f"""
<node>
  <interface name="{NAME}">
    <property name="State" type="u" access="read"/>
    <signal name="StateChanged"><arg type="u"/></signal>
  </interface>
</node>""").interfaces[0]


class NetworkManager:
    def __init__(self):
        address = f"unix:path={namespace.private_folder('system')}/bus"
        self._bus = subprocess.Popen(["dbus-daemon", "--session", "--nofork", "--print-address", f"--address={address}"],
                                     stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        if not self._bus.stdout.readline():
            raise Failure("The system bus does not start.")
        flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
        self._connection = Gio.DBusConnection.new_for_address_sync(address, flags, None, None)
        self._connection.register_object(PATH, _INTERFACE, None, self._asked, None)
        self.environment = {"DBUS_SYSTEM_BUS_ADDRESS": address}
        self.state = ONLINE
        self.questions = 0
        self._questioner = None

    def __enter__(self):
        self.appear()
        return self

    def __exit__(self, *_):
        self._connection.close_sync()
        self._bus.kill()
        self._bus.wait()

    def appear(self):
        self._call("RequestName", GLib.Variant("(su)", (NAME, 0)))

    def disappear(self):
        self._call("ReleaseName", GLib.Variant("(s)", (NAME,)))

    def become(self, state):
        self.state = state
        self._connection.emit_signal(None, PATH, NAME, "StateChanged", GLib.Variant("(u)", (state,)))

    def visitors(self):
        """How many others are on the bus."""
        names = self._call("ListNames", None).unpack()[0]
        return len([name for name in names if name.startswith(":")]) - 1

    def wait_until_heard(self):
        """Until the one who asked last has received all that was sent."""
        try:
            self._connection.call_sync(self._questioner, "/", "org.freedesktop.DBus.Peer", "Ping", None, None,
                                       Gio.DBusCallFlags.NONE, 5000, None)
        except GLib.Error:
            raise Failure("The program has left the system bus before the machine was online.") from None

    def _asked(self, _connection, sender, *_):
        self.questions += 1
        self._questioner = sender
        something_happened()
        return GLib.Variant("u", self.state)

    def _call(self, method, arguments):
        return self._connection.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", method,
                                          arguments, None, Gio.DBusCallFlags.NONE, 5000, None)
