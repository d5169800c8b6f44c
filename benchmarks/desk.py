# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""A desktop for what is measured: a screen, a session bus, a panel, and the account's service under its real name."""

import os
import re
import subprocess

from gi.repository import Gio, GLib

import namespace
from events import something_happened, wait_until
from status_host import ITEM, PROPERTIES, StatusHost, dictionary, drain
from waiting import look_until


class Desk:
    """Everything outside the programs; each desk is for itself, down to the home folder."""

    def __init__(self, name):
        self.home = namespace.private_folder(name)
        self.environment = {"HOME": str(self.home), "PATH": "/usr/bin:/bin", "LC_ALL": "C.UTF-8",
                            "XDG_CONFIG_HOME": str(self.home / ".config"),
                            "XDG_RUNTIME_DIR": str(self.home / "runtime")}
        for folder in ("XDG_CONFIG_HOME", "XDG_RUNTIME_DIR"):
            os.mkdir(self.environment[folder], mode=0o700)
        # Without -noreset it starts afresh when the last window has gone, and turns away who comes meanwhile.
        self._screen, number = _announcing("Xvfb", "-displayfd", "1", "-noreset", "-nolisten", "tcp",
                                           "-screen", "0", "1280x1024x24")
        self.environment["DISPLAY"] = f":{number}"
        self._bus, address = _announcing("dbus-daemon", "--session", "--nofork", "--print-address",
                                         f"--address=unix:path={self.home}/runtime/bus", env=self.environment)
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = os.environ["DBUS_SESSION_BUS_ADDRESS"] = address
        self.panel = Panel()

    def press(self, window, key):
        """Presses a key in the window with this title once it is on the screen, and waits until it has gone."""
        def present():
            return self._xdotool("search", "--onlyvisible", "--name", f"^{re.escape(window)}$")
        look_until(present, f"the window {window!r}")
        self._xdotool("windowfocus", "--sync", present().split()[0])
        self._xdotool("key", key)
        look_until(lambda: not present(), f"the end of the window {window!r}")

    def _xdotool(self, *arguments):
        return subprocess.run(["xdotool", *arguments], env=self.environment, capture_output=True, text=True).stdout


class Panel(StatusHost):
    """Reads of the item that registered last what panels read, and when they do."""

    def __init__(self):
        super().__init__()
        self.start_watcher()
        self.forget()

    def forget(self):
        self.registrations.clear()
        self.present = False  # an item has been read
        self.text = ""  # what stands in the bar, or in the tool tip of an item that has one
        self._has_tool_tip = False

    def _follow(self, sender, path):
        super()._follow(sender, path)
        self._ask("GetAll", GLib.Variant("(s)", (ITEM,)), self._read_all)

    def _signalled(self, _bus, _sender, _path, _interface, member, arguments):
        if member == "NewIcon":
            self._ask("Get", GLib.Variant("(ss)", (ITEM, "IconPixmap")), lambda answer: None)
        elif member == "NewToolTip":
            self._ask("Get", GLib.Variant("(ss)", (ITEM, "ToolTip")),
                      lambda answer: self._show(_title(answer.get_variant())))
        elif member == "XAyatanaNewLabel" and not self._has_tool_tip:
            self._show(arguments.get_child_value(0).get_string())

    def _read_all(self, every):
        properties = dictionary(every)
        self.present = True
        self._has_tool_tip = "ToolTip" in properties
        self._show(_title(properties["ToolTip"]) if self._has_tool_tip else properties["XAyatanaLabel"].get_string())

    def _show(self, text):
        self.text = text
        something_happened()

    def click_row(self, text):
        def row():
            return next((row for row in self.menu() or [] if row["label"].replace("__", "_") == text), None)
        wait_until(row, f"the row {text!r}")
        self.click(row()["id"])
        drain()


def _title(tool_tip):
    return tool_tip.get_child_value(2).get_string()


def _announcing(*command, env=None):
    """A process, and the first line it writes: it is ready then."""
    process = subprocess.Popen(command, env=env, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
    return process, process.stdout.readline().strip()
