#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""The installed program as a user starts it, from its desktop entry; runs in the root that install-test makes.

    try_installed.py first|again

The first time, there are no preferences, and the program offers its set-up. Then, and in later runs with the
preferences found, it fetches figures over HTTPS from a server on loopback under the real name.
"""

import os
import socket
import subprocess
import sys
from pathlib import Path

sys.dont_write_bytecode = True
TESTS = Path(__file__).resolve().parents[1]
sys.path += [str(TESTS / "endtoend"), str(TESTS / "support")]

from gi.repository import Gio, GLib

import namespace
from events import expect, wait_until
from figures import SETUP_ROWS, delivering, figure_rows, release
from panel import Panel
from tls_service import Authority, TlsService
from vantelo_process import PreferenceFile

ENTRY = "app.vantelo.Vantelo.desktop"
HOSTS = ["graph.facebook.com", "vantelo.example"]
TRUSTED = Path("/usr/local/share/ca-certificates/test.crt")
ICONS = Path("/usr/share/icons/hicolor/scalable")


def start_services():
    """The service and the web site on loopback; the system trusts them as it trusts any authority."""
    folder = Path("/root/authority")
    subprocess.run(["rm", "-rf", folder], check=True)
    folder.mkdir()
    authority = Authority(folder, "An authority")
    TRUSTED.write_bytes((authority.store / "ca-certificates.crt").read_bytes())
    subprocess.run(["update-ca-certificates", "--fresh"], check=True, capture_output=True)
    Path("/etc/hosts").write_text(f"127.0.0.1 localhost\n127.0.0.2 {HOSTS[0]}\n127.0.0.3 {HOSTS[1]}\n")
    namespace.set_network(up=True)
    graph, website = (TlsService(host, f"127.0.0.{number}", authority.server_context(host), [])
                      for number, host in enumerate(HOSTS, start=2))
    graph.answer = delivering(impressions=12345)
    website.answer = release("0.0.1")


def start_from_desktop_entry():
    entry = Gio.DesktopAppInfo.new(ENTRY)
    expect(entry.get_name(), "Vantelo", "The name in the desktop's menu")
    expect((ICONS / "apps" / f"{entry.get_icon().to_string()}.svg").is_file(), True, "Whether the icon is there")
    entry.launch([], None)


def expect_icon(panel, name):
    expect(panel.icon_name(), name, "The name of the icon")
    expect((ICONS / "status" / f"{name}.svg").is_file(), True, "Whether the icon of that name is there")


def quit_from_menu(panel):
    panel.click("Quit Vantelo")
    wait_until(lambda: not is_running(), "the end of the program")
    panel.forget()


def is_running():
    bus = Gio.bus_get_sync(Gio.BusType.SESSION)
    return bus.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "NameHasOwner",
                         GLib.Variant("(s)", ("app.vantelo.Vantelo",)), None, Gio.DBusCallFlags.NONE, 5000,
                         None).unpack()[0]


def main():
    start_services()
    panel = Panel()
    preferences = PreferenceFile(Path("/root/.config"))
    if sys.argv[1] == "first":
        start_from_desktop_entry()
        panel.wait_for_title("⚪ Setup")
        panel.wait_for_rows(SETUP_ROWS)
        expect_icon(panel, "app.vantelo.Vantelo-white")
        quit_from_menu(panel)
        preferences.path.parent.parent.mkdir(exist_ok=True)
        preferences.write(accessToken="token", adAccountId="1234567890")
    start_from_desktop_entry()
    panel.wait_for_title("🟢 12,345")
    panel.wait_for_rows(figure_rows())
    expect_icon(panel, "app.vantelo.Vantelo-green")
    quit_from_menu(panel)


main()
