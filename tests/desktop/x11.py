# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""An X display without a screen, with a mouse and a keyboard."""

import os
import subprocess

from Xlib import X, XK, display
from Xlib.ext import xtest

from events import Failure
from picture import Picture, Rectangle

SIZE = (1280, 800)


class X11Display:
    def __init__(self, session, scale=1, text_scale=1):
        read, write = os.pipe()
        self.size = width, height = [scale * side for side in SIZE]
        self._server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(write), "-screen", "0", f"{width}x{height}x24", "-nolisten", "tcp"],
            pass_fds=[write], stderr=subprocess.DEVNULL)
        os.close(write)
        number = os.read(read, 16).decode().strip()
        if not number:
            raise Failure("Xvfb does not start.")
        session.share(DISPLAY=f":{number}")
        self._display = display.Display(f":{number}")
        self._root = self._display.screen().root
        self._tell("RESOURCE_MANAGER", f"Xft.dpi:\t{96 * text_scale}\n")

    def tell_accessibility_bus(self, address):
        """As a whole session does. Qt 5 asks the session bus, too, but then often does not get through to the other."""
        self._tell("AT_SPI_BUS", address)

    def _tell(self, name, text):
        self._root.change_property(*map(self._display.intern_atom, (name, "STRING")), 8, text.encode())
        self._display.sync()

    def grab(self, part=None):
        part = part or Rectangle(0, 0, *self.size)
        image = self._root.get_image(part.x, part.y, part.width, part.height, X.ZPixmap, 0xFFFFFFFF)
        return Picture.of_bgrx(part.width, part.height, image.data)

    def area_of(self, menu, _closed):
        """Where the menu is on the screen."""
        return menu.extents

    def point(self, x, y):
        xtest.fake_input(self._display, X.MotionNotify, x=int(x), y=int(y))
        self._display.sync()

    def press(self, button=1):
        for kind in (X.ButtonPress, X.ButtonRelease):
            xtest.fake_input(self._display, kind, button)
        self._display.sync()

    def key(self, name):
        code = self._display.keysym_to_keycode(XK.string_to_keysym(name))
        for kind in (X.KeyPress, X.KeyRelease):
            xtest.fake_input(self._display, kind, code)
        self._display.sync()

    def dismiss(self):
        """What closes an open menu."""
        self.key("Escape")
