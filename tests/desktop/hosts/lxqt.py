# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT

from x11desktop import X11Desktop

_PANEL = """[General]
panels=panel1

[panel1]
position=Top
panelSize=28
plugins=taskbar, statusnotifier

[taskbar]
type=taskbar

[statusnotifier]
type=statusnotifier
alignment=Right
"""


class Host(X11Desktop):
    name = "LXQt"
    program_draws_menu = True
    scales_by_resolution = False
    programs = ["lxqt-panel", "openbox"]
    panel = ["lxqt-panel"]
    accessible_names = ("lxqt-panel",)

    def configure(self):
        folder = self.session.home / ".config/lxqt"
        folder.mkdir(parents=True)
        (folder / "panel.conf").write_text(_PANEL)
        if self.look.dark is not None:
            (folder / "lxqt.conf").write_text(f"[General]\ntheme={'dark' if self.look.dark else 'light'}\n")
