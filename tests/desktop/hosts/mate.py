# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT

from x11desktop import X11Desktop

_SETTINGS = """[org/mate/panel/general]
toplevel-id-list=['top']
object-id-list=['tray']

[org/mate/panel/toplevels/top]
orientation='top'
size=28

[org/mate/panel/objects/tray]
object-type='applet'
applet-iid='NotificationAreaAppletFactory::NotificationArea'
toplevel-id='top'
position=1
panel-right-stick=true
"""


class Host(X11Desktop):
    name = "MATE"
    text_beside = "right"
    at_times = {"a_screen_reader_reads_the_state":
                "the panel embeds its applet's window from another process, and seldom joins the two accessible trees"}
    program_draws_menu = True
    programs = ["mate-panel", "marco"]
    services = ["org.mate.panel.applet.NotificationAreaAppletFactory"]
    window_manager = ["marco", "--no-composite"]
    panel = ["mate-panel"]
    accessible_names = ("mate-panel", "notification-area-applet")

    def configure(self):
        self.session.write_settings(_SETTINGS)
        folder = self.session.home / ".config/gtk-3.0"
        folder.mkdir()
        # As MATE's settings daemon has it; without it the panel shows the text in the dot's place.
        (folder / "settings.ini").write_text("[Settings]\ngtk-button-images=1\n")
