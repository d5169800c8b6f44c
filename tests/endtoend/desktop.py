# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""A private X11 screen on which the program's windows are found and pressed as a screen reader does it."""

import os
import re
import subprocess

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, Gio, GLib  # noqa: E402

from events import poll_until  # noqa: E402


class Desktop:
    def __init__(self):
        read, write = os.pipe()
        self._screen = subprocess.Popen(
            ["Xvfb", "-displayfd", str(write), "-screen", "0", "1400x1000x24", "-nolisten", "tcp"],
            pass_fds=[write], stderr=subprocess.DEVNULL)
        os.close(write)
        with os.fdopen(read) as number:
            os.environ["DISPLAY"] = ":" + number.readline().strip()
        Atspi.set_timeout(10_000, 30_000)  # milliseconds; the machine may be busy
        self.screen = {"DISPLAY": os.environ["DISPLAY"], "QT_QPA_PLATFORM": "xcb"}
        self.environment = {**self.screen, "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"}

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self._screen.terminate()
        self._screen.wait()

    @staticmethod
    def bus_address():
        """Of the bus on which assistive programs listen."""
        session = Gio.bus_get_sync(Gio.BusType.SESSION)
        return session.call_sync("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress", None, None,
                                 Gio.DBusCallFlags.NONE, -1, None).unpack()[0]

    def properties(self):
        """All that the windows tell other programs on the screen."""
        tree = subprocess.run(["xwininfo", "-root", "-tree"], check=True, capture_output=True, text=True).stdout
        windows = re.findall(r"^ +(0x[0-9a-f]+) ", tree, re.MULTILINE)
        return tree.encode() + b"".join(
            subprocess.run(["xprop", "-id", window], capture_output=True).stdout for window in windows)

    def texts(self):
        """All that the windows tell: names, descriptions, contents."""
        return [text for node in self._nodes(self._program())
                for text in (node.get_name(), node.get_description(), _contents(node)) if text]

    def window(self, title):
        return self.wait_for(Atspi.Role.FRAME, title)

    def has_window(self, title):
        return self._find(Atspi.Role.FRAME, title) is not None

    def wait_for(self, role, name):
        found = []
        poll_until(lambda: (node := self._find(role, name)) and found.append(node) is None, f"{role} {name!r}")
        return found[0]

    def wait_for_any(self, role, but):
        """Waits for something with the role and another name than this."""
        poll_until(lambda: any(node.get_role() == role and node.get_name() != but
                               for node in self._nodes(self._program())), f"{role}, but not {but!r}")

    def press(self, role, name):
        node = self.wait_for(role, name)
        names = [Atspi.Action.get_action_name(node, i) for i in range(Atspi.Action.get_n_actions(node))]
        Atspi.Action.do_action(node, names.index("Press"))

    def focus(self, role, name):
        node = self.wait_for(role, name)
        Atspi.Component.grab_focus(node)
        poll_until(lambda: node.get_state_set().contains(Atspi.StateType.FOCUSED), f"the focus on {name!r}")

    # The same without assistive technology, by title and keyboard

    @staticmethod
    def wait_for_screen(title):
        """Waits until the window is shown and has the keyboard."""
        subprocess.run(["xdotool", "search", "--sync", "--onlyvisible", "--name", f"^{title}$", "windowfocus"],
                       check=True, capture_output=True)

    @staticmethod
    def wait_for_menu():
        """Waits until the program shows a window, while no other than its own menu can be open."""
        poll_until(lambda: subprocess.run(["xdotool", "search", "--onlyvisible", "--class", "vantelo"],
                                          capture_output=True).returncode == 0, "the program's own menu")

    def close_window(self, title):
        self.wait_for_screen(title)
        self.keys("Escape")
        poll_until(lambda: subprocess.run(["xdotool", "search", "--onlyvisible", "--name", f"^{title}$"],
                                          capture_output=True).returncode != 0, f"{title!r} to close")

    @staticmethod
    def type(text):
        subprocess.run(["xdotool", "type", "--delay", "2", text], check=True)

    @staticmethod
    def keys(*keys):
        subprocess.run(["xdotool", "key", *keys], check=True)

    def _find(self, role, name):
        try:
            return next((node for node in self._nodes(self._program())
                         if node.get_role() == role and node.get_name() == name), None)
        except GLib.Error:  # the tree changed under our hands
            return None

    @staticmethod
    def _program():
        """The program that has come last."""
        desktop = Atspi.get_desktop(0)
        children = [desktop.get_child_at_index(index) for index in range(desktop.get_child_count())]
        return next((child for child in reversed(children) if child and child.get_name() == "Vantelo"), None)

    def _nodes(self, root):
        if root is None:
            return
        yield root
        for index in range(root.get_child_count()):
            try:
                yield from self._nodes(root.get_child_at_index(index))
            except GLib.Error:  # the tree changed under our hands
                pass


def _contents(node):
    if "Text" not in node.get_interfaces():
        return ""
    return Atspi.Text.get_text(node, 0, Atspi.Text.get_character_count(node))
