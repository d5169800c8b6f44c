# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT

import shutil
from pathlib import Path

from x11desktop import X11Desktop


_VERSION = 6 if shutil.which("kded6") else 5


class Host(X11Desktop):
    name = f"KDE Plasma {_VERSION}"
    program_draws_menu = _VERSION == 5  # newer ones open the menu themselves
    scales_by_resolution = False
    programs = ["plasmashell", f"kded{_VERSION}", "kwin_x11"]
    cannot = {"a_screen_reader_reads_the_state": "the panel reads out the item's title, which never changes"}
    services = [f"org.kde.kded{_VERSION}", "org.kde.ActivityManager", *(["org.kde.kglobalaccel"] if _VERSION == 5 else [])]
    window_manager = ["kwin_x11"]
    panel = ["plasmashell"]
    accessible_names = ("plasmashell", "Plasma")
    environment = {"XDG_CURRENT_DESKTOP": "KDE", "KDE_FULL_SESSION": "true", "KDE_SESSION_VERSION": str(_VERSION),
                   "QT_QUICK_BACKEND": "software", "KWIN_COMPOSE": "N"}

    def configure(self):
        if self.look.dark is None:
            return
        name = "Dark" if self.look.dark else "Light"
        folder = self.session.home / ".config"
        folder.mkdir(exist_ok=True)
        (folder / "kdeglobals").write_text(Path(f"/usr/share/color-schemes/Breeze{name}.colors").read_text())
        (folder / "plasmarc").write_text(f"[Theme]\nname=breeze-{name.lower()}\n")
