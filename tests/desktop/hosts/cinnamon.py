# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT

from x11desktop import X11Desktop


# The status applet alone: those that miss a service here would show a notification, which moves the item.
_SETTINGS = """[org/cinnamon]
enabled-applets=['panel1:right:0:xapp-status@cinnamon.org:1']

[org/cinnamon/desktop/notifications]
display-notifications=false
"""


class Host(X11Desktop):
    name = "Cinnamon"
    cannot = {"a_screen_reader_reads_the_state": "the words are in the tooltip alone, which comes with the pointer"}
    programs = ["cinnamon"]
    window_manager = ["/usr/libexec/xapps/sn-watcher/xapp-sn-watcher"]  # as its autostart file has it
    panel = ["cinnamon"]
    accessible_names = ("cinnamon",)
    environment = {"XDG_CURRENT_DESKTOP": "X-Cinnamon", "LIBGL_ALWAYS_SOFTWARE": "1"}

    def configure(self):
        self.session.write_settings(_SETTINGS)
