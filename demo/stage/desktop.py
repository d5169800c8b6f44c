# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT

"""A private GNOME desktop without a screen, on buses of its own."""

import json
import os
import shutil
import tempfile
from pathlib import Path

from gi.repository import Gio, GLib

from .processes import Failure, NotYet, wait_until

EXTENSION = 'ubuntu-appindicators@ubuntu.com'
SIZE = 1280, 800  # at a scale of 1
ACCESSIBILITY = '/usr/libexec/at-spi-bus-launcher'

_BUS = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:dir={directory}</listen>
  <policy context="default"><allow send_destination="*"/><allow receive_sender="*"/><allow own="*"/></policy>
</busconfig>
"""

# No service files on the buses: nothing is started that the desktop does not start itself.
_SETTINGS = f"""[org/gnome/shell]
enabled-extensions=['{EXTENSION}']
welcome-dialog-last-shown-version='999'

[org/gnome/desktop/background]
picture-options='none'
color-shading-type='vertical'
primary-color='#4f6d8f'
secondary-color='#1d2b3a'
"""

# Words about this session itself, such as a warning for root, would only stand in the pictures' way.
_TIDY = """
imports.gi.St.Settings.get().inhibit_animations();
Main.overview.hide();
Main.messageTray.bannerBlocked = true;
Main.messageTray.getSources().forEach(source => source.destroy());
Main.panel.statusArea.quickSettings._unsafeMode?.hide();
"""


def call(bus, name, path, interface, method, arguments=None):
    try:
        return bus.call_sync(name, path, interface, method, arguments, None, Gio.DBusCallFlags.NONE, 60_000,
                             None).unpack()
    except GLib.Error as error:
        raise NotYet(f'{interface}.{method}: {error.message}') from error


def is_owned(bus, name):
    return call(bus, 'org.freedesktop.DBus', '/org/freedesktop/DBus', 'org.freedesktop.DBus', 'NameHasOwner',
                GLib.Variant('(s)', (name,)))[0]


def switch_accessibility_on(bus):
    """As a screen reader does that starts; programs then tell what is in their windows."""
    call(bus, 'org.a11y.Bus', '/org/a11y/bus', 'org.freedesktop.DBus.Properties', 'Set',
         GLib.Variant('(ssv)', ('org.a11y.Status', 'IsEnabled', GLib.Variant('b', True))))


def missing_packages():
    """The Debian packages that the desktop needs and that are not there."""
    needs = {
        'at-spi2-core': os.path.exists(ACCESSIBILITY),
        'dbus': shutil.which('dbus-daemon'),
        'gnome-shell': shutil.which('gnome-shell'),
        'gnome-shell-extension-appindicator': os.path.isdir(f'/usr/share/gnome-shell/extensions/{EXTENSION}'),
        'python3-dbusmock': os.path.isdir('/usr/lib/python3/dist-packages/dbusmock'),
        'fonts-noto-color-emoji': os.path.isdir('/usr/share/fonts/truetype/noto'),
        'qt6-wayland': any(Path('/usr/lib').glob('*/qt6/plugins/platforms/libqwayland*')),
    }
    return [package for package, there in needs.items() if not there]


class Desktop:
    """The desktop; it lasts as long as the processes it is given to."""

    def __init__(self, processes, home, log, scale=1, language=''):
        self._processes = processes
        self._log = log
        self._size = 'x'.join(str(scale * side) for side in SIZE)
        # Sockets have short names, which a build directory may not have.
        self._runtime = tempfile.TemporaryDirectory(prefix='vantelo-demo-')
        self.environment = self._environment(home)
        self.environment['LANGUAGE'] = language
        self._write_settings(f'{_SETTINGS}\n[org/gnome/desktop/interface]\nscaling-factor=uint32 {scale}\n')

    def open(self):
        system = self._start_bus('DBUS_SYSTEM_BUS_ADDRESS')
        self._start(['/usr/bin/python3', '-m', 'dbusmock', '--system', '--template', 'logind'])
        wait_until(lambda: is_owned(system, 'org.freedesktop.login1'), 20, 'The stand-in for logind did not start.')
        self.bus = self._start_bus('DBUS_SESSION_BUS_ADDRESS')
        self._start([ACCESSIBILITY, '--launch-immediately'])
        wait_until(lambda: is_owned(self.bus, 'org.a11y.Bus'), 20, 'The accessibility bus did not start.')
        switch_accessibility_on(self.bus)
        # Without X: it would want a folder in /tmp that only an X server or the system's start makes as it likes it.
        self._start(['gnome-shell', '--headless', '--wayland', '--no-x11', '--unsafe-mode', '--virtual-monitor', self._size])
        wait_until(lambda: is_owned(self.bus, 'org.gnome.Shell'), 40, 'GNOME Shell did not start.')
        wait_until(lambda: is_owned(self.bus, 'org.kde.StatusNotifierWatcher'), 20, 'The status area did not start.')
        wait_until(lambda: not self.evaluate('Main.layoutManager._startingUp'), 20, 'The desktop did not settle.')
        self.evaluate(_TIDY)
        wait_until(lambda: not self.evaluate('Main.overview.visible'), 20, 'The overview did not close.')

    def evaluate(self, script):
        """Runs a script inside the desktop's shell and gives its result."""
        succeeded, result = call(self.bus, 'org.gnome.Shell', '/org/gnome/Shell', 'org.gnome.Shell', 'Eval',
                                 GLib.Variant('(s)', (script,)))
        if not succeeded:
            raise NotYet(f'The desktop refused a script: {result}')
        return json.loads(result) if result else None

    def screenshot(self, path):
        succeeded, _ = call(self.bus, 'org.gnome.Shell.Screenshot', '/org/gnome/Shell/Screenshot',
                            'org.gnome.Shell.Screenshot', 'Screenshot',
                            GLib.Variant('(bbs)', (False, False, str(path))))
        if not succeeded:
            raise Failure('The desktop did not take the screenshot.')

    def _environment(self, home):
        runtime = self._runtime.name
        environment = {
            'HOME': str(home),
            'LANG': 'C.UTF-8',
            'PATH': os.environ['PATH'],
            'GSETTINGS_BACKEND': 'keyfile',
            'WAYLAND_DISPLAY': 'wayland-0',
            'XDG_CURRENT_DESKTOP': 'GNOME',
            'XDG_RUNTIME_DIR': runtime,
        }
        for kind in ('CACHE', 'CONFIG', 'DATA', 'STATE'):
            directory = Path(home) / kind.lower()
            directory.mkdir(parents=True)
            environment[f'XDG_{kind}_HOME'] = str(directory)
        return environment

    def _write_settings(self, text):
        settings = Path(self.environment['XDG_CONFIG_HOME']) / 'glib-2.0' / 'settings'
        settings.mkdir(parents=True)
        (settings / 'keyfile').write_text(text, encoding='utf-8')

    def _start(self, command):
        return self._processes.start_quietly(command, self.environment, self._log)

    def _start_bus(self, variable):
        configuration = Path(self._runtime.name) / 'bus.conf'
        configuration.write_text(_BUS.format(directory=self._runtime.name), encoding='utf-8')
        daemon = self._processes.start(['dbus-daemon', f'--config-file={configuration}', '--nofork', '--print-address'],
                                       self.environment, self._log)
        address = daemon.stdout.readline().strip()
        if not address:
            raise Failure('A private message bus did not start.')
        self.environment[variable] = address
        flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
        return Gio.DBusConnection.new_for_address_sync(address, flags, None, None)
