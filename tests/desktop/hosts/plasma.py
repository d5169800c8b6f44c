# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT

from pathlib import Path

from x11desktop import X11Desktop


class Host(X11Desktop):
    name = "KDE Plasma"
    program_draws_menu = True
    scales_by_resolution = False
    programs = ["plasmashell", "kded5", "kwin_x11"]
    cannot = {"a_screen_reader_reads_the_state": "the panel reads out the item's title, which never changes"}
    services = ["org.kde.kded5", "org.kde.ActivityManager", "org.kde.kglobalaccel"]
    window_manager = ["kwin_x11"]
    panel = ["plasmashell"]
    accessible_names = ("plasmashell", "Plasma")
    environment = {"XDG_CURRENT_DESKTOP": "KDE", "KDE_FULL_SESSION": "true", "KDE_SESSION_VERSION": "5",
                   "QT_QUICK_BACKEND": "software", "KWIN_COMPOSE": "N"}

    def configure(self):
        if self.look.dark is None:
            return
        name = "Dark" if self.look.dark else "Light"
        folder = self.session.home / ".config"
        folder.mkdir(exist_ok=True)
        (folder / "kdeglobals").write_text(Path(f"/usr/share/color-schemes/Breeze{name}.colors").read_text())
        (folder / "plasmarc").write_text(f"[Theme]\nname=breeze-{name.lower()}\n")
