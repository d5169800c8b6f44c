# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""A Wayland display without a screen: the compositor sway, with a mouse and a keyboard."""

import json
import subprocess
from pathlib import Path

from patience import watch
from picture import Picture
from virtualpointer import VirtualPointer

SIZE = (1280, 800)
_NOWHERE = (640, 780)
_CONFIGURATION = """
output HEADLESS-1 resolution {width}x{height} scale {scale}
default_border none
xwayland disable
"""


class SwayDisplay:
    def __init__(self, session, scale=1):
        self._scale = scale
        width, height = size = [scale * side for side in SIZE]
        configuration = session.home / "sway.conf"
        configuration.write_text(_CONFIGURATION.format(width=width, height=height, scale=scale))
        self._folder = Path(session.environment["XDG_RUNTIME_DIR"])
        # sway runs for nobody who could become root, which the first user of a namespace could.
        session.run(["unshare", "--user", "--map-user=1000", "--map-group=1000", "sway", "--config", configuration],
                    WLR_BACKENDS="headless", WLR_LIBINPUT_NO_DEVICES="1", WLR_RENDERER="pixman")
        display = watch(lambda: next(iter(sorted(self._folder.glob("wayland-?"))), None), "the compositor")
        socket = watch(lambda: next(iter(self._folder.glob("sway-ipc.*")), None), "the compositor's control socket")
        session.share(WAYLAND_DISPLAY=display.name, SWAYSOCK=str(socket), XDG_SESSION_TYPE="wayland",
                      XDG_CURRENT_DESKTOP="sway")
        self._environment = session.environment
        session.run(["wtype", "-s", "3600000"])  # a keyboard that stays plugged in, or no window could have the focus
        self._pointer = VirtualPointer(display, size)

    def grab(self, part=None):
        region = []
        if part:  # which grim counts as windows do
            x, y, width, height = (side // self._scale for side in (part.x, part.y, part.width, part.height))
            region = ["-g", f"{x},{y} {width}x{height}"]
        shot = self._folder / "shot.png"
        self._run("grim", "-l", "0", *region, str(shot))
        return Picture.read(shot)

    def area_of(self, _menu, closed):
        """Where the menu is on the screen: no window knows that on Wayland, so where the picture has changed."""
        return closed.difference(self.grab())

    def point(self, x, y):
        self._pointer.move(x, y)

    def press(self, button=1):
        self._pointer.click(button)

    def key(self, name):
        self._run("wtype", "-k", name)

    def dismiss(self):
        """What closes an open menu: bars have no keyboard."""
        self.point(*_NOWHERE)
        self.press()

    def tree(self):
        return json.loads(self._sway("-r", "-t", "get_tree"))

    def _sway(self, *words):
        return self._run("swaymsg", *words)

    def _run(self, *command):
        return subprocess.run(command, env=self._environment, check=True, capture_output=True).stdout
