# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT

from x11desktop import X11Desktop

_PANEL = """<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array">
    <value type="int" value="1"/>
    <property name="dark-mode" type="bool" value="DARK"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=6;x=0;y=0"/>
      <property name="length" type="uint" value="100"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="size" type="uint" value="28"/>
      <property name="plugin-ids" type="array">
        <value type="int" value="1"/><value type="int" value="2"/><value type="int" value="3"/>
      </property>
    </property>
  </property>
  <property name="plugins" type="empty">
    <property name="plugin-1" type="string" value="tasklist"/>
    <property name="plugin-2" type="string" value="separator">
      <property name="expand" type="bool" value="true"/><property name="style" type="uint" value="0"/>
    </property>
    <property name="plugin-3" type="string" value="systray"/>
  </property>
</channel>
"""


class Host(X11Desktop):
    name = "Xfce"
    programs = ["xfce4-panel", "xfwm4"]
    cannot = {"a_screen_reader_reads_the_state":
              "the panel embeds its tray's window from another process without joining the two accessible trees"}
    services = ["org.xfce.Xfconf"]
    window_manager = ["xfwm4", "--compositor=off"]
    panel = ["xfce4-panel", "--disable-wm-check"]
    accessible_names = ("xfce4-panel", "wrapper-2.0")

    def configure(self):
        folder = self.session.home / ".config/xfce4/xfconf/xfce-perchannel-xml"
        folder.mkdir(parents=True)
        is_dark = str(self.look.dark is not False).lower()
        (folder / "xfce4-panel.xml").write_text(_PANEL.replace("DARK", is_dark))
