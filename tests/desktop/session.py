# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""A user's session without a desktop yet: a home folder, a message bus and an accessibility bus."""

import os
import shutil
import subprocess
from pathlib import Path

from gi.repository import Gio, GLib

import namespace
from demo.stage.desktop import ACCESSIBILITY, switch_accessibility_on
from events import Failure
from patience import watch

_SERVICES = Path("/usr/share/dbus-1/services")
_BUS = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:path={address}</listen>
  <servicedir>{services}</servicedir>
  <policy context="default"><allow send_destination="*"/><allow receive_sender="*"/><allow own="*"/></policy>
</busconfig>
"""
# A browser that only writes down where it was sent.
_BROWSER = """#!/bin/sh
echo "$1" >>"$HOME/visited"
"""


def browser_in(home):
    """Makes a folder for the search path, with what opens addresses."""
    folder = home / "bin"
    folder.mkdir()
    (folder / "xdg-open").write_text(_BROWSER)
    (folder / "xdg-open").chmod(0o755)
    return folder


class Session:
    def __init__(self, log, services=(), **environment):
        """`services` are the bus names whose programs the bus starts when they are called."""
        self._log = log
        self.home = namespace.private_folder("home")
        (self.home / "runtime").mkdir(mode=0o700)
        self.environment = {
            "HOME": str(self.home),
            "LANG": "C.UTF-8",
            "PATH": f"{browser_in(self.home)}:/usr/bin:/bin",
            "XDG_CONFIG_HOME": str(self.home / ".config"),
            "XDG_RUNTIME_DIR": str(self.home / "runtime"),
            "GSETTINGS_BACKEND": "keyfile",
            **environment,
        }
        self._start_bus(services)
        self.run([ACCESSIBILITY, "--launch-immediately"])
        watch(lambda: self.has_name("org.a11y.Bus"), "the accessibility bus")
        switch_accessibility_on(self.bus)

    def run(self, command, **environment):
        """Starts a program that lasts as long as it likes; what it says goes to the log."""
        return subprocess.Popen(command, env=self.environment | environment, stdin=subprocess.DEVNULL, stdout=self._log,
                                stderr=self._log, cwd=self.home)

    def share(self, **variables):
        """Adds to the environment of programs, those that the bus starts included."""
        self.environment |= variables
        self.bus.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                           "UpdateActivationEnvironment", GLib.Variant("(a{ss})", (variables,)), None,
                           Gio.DBusCallFlags.NONE, 5000, None)

    def has_name(self, name):
        return self.bus.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                                  "NameHasOwner", GLib.Variant("(s)", (name,)), None, Gio.DBusCallFlags.NONE, 5000, None).unpack()[0]

    def visited(self):
        """The addresses that the browser was sent to."""
        visits = self.home / "visited"
        return visits.read_text().splitlines() if visits.exists() else []

    def write_settings(self, text):
        """GSettings as a key file. The accessibility bus keeps there that it is switched on."""
        folder = self.home / ".config" / "glib-2.0" / "settings"
        folder.mkdir(parents=True, exist_ok=True)
        (folder / "keyfile").write_text("[org/gnome/desktop/interface]\ntoolkit-accessibility=true\n\n" + text)

    def _start_bus(self, services):
        address = self.home / "runtime" / "bus"
        folder = self.home / "services"
        folder.mkdir()
        for service in services:
            shutil.copy(_SERVICES / f"{service}.service", folder)
        configuration = self.home / "bus.conf"
        configuration.write_text(_BUS.format(address=address, services=folder))
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = f"unix:path={address}"
        daemon = subprocess.Popen(["dbus-daemon", f"--config-file={configuration}", "--nofork", "--print-address"],
                                  env=self.environment, stdout=subprocess.PIPE, stderr=self._log)
        if not daemon.stdout.readline():
            raise Failure("The session bus does not start.")
        flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
        self.bus = Gio.DBusConnection.new_for_address_sync(self.environment["DBUS_SESSION_BUS_ADDRESS"], flags, None,
                                                           None)

