# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT

from x11desktop import X11Desktop


class Host(X11Desktop):
    name = "legacy X11 tray"
    cannot = {"a_screen_reader_reads_the_state":
              "a legacy tray knows no words, only a picture"}
    program_draws_menu = True
    programs = ["trayer", "openbox"]
    panel = ["trayer", "--edge", "top", "--align", "right", "--widthtype", "request", "--height", "28",
             "--transparent", "true", "--alpha", "0", "--tint", "0x303030"]
    accessible_names = ("Vantelo",)
