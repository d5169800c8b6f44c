# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT

from pathlib import Path

from hosts.plasma import Host as PlasmaOnX11
from look import Look
from patience import watch
from x11 import SIZE


class Host(PlasmaOnX11):
    """The compositor shows its screen in a window that fills an X display, which has the mouse, the keyboard and the
    pixels. The programs know of Wayland alone."""

    name = f"{PlasmaOnX11.name} on Wayland"
    programs = [*PlasmaOnX11.programs[:-1], "kwin_wayland"]
    # Painted without OpenGL; and by its menu the compositor knows the panel, which may do more than other programs.
    environment = {**PlasmaOnX11.environment, "KWIN_COMPOSE": "Q", "XDG_MENU_PREFIX": "plasma-"}
    window_manager = ["kwin_wayland", "--width", str(SIZE[0]), "--height", str(SIZE[1])]

    def open(self, log, look=Look()):
        super().open(log, look)
        socket = Path(self.session.environment["XDG_RUNTIME_DIR"]) / "wayland-0"
        watch(socket.exists, "the compositor")
        self.session.share(WAYLAND_DISPLAY=socket.name, XDG_SESSION_TYPE="wayland", DISPLAY="")
