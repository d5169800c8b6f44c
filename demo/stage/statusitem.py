# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT

"""The program's item in the status area: what it says over D-Bus, and what the panel made of it."""

import json

from gi.repository import GLib

from .desktop import call
from .processes import NotYet

DIVIDER = '─' * 24
_PROPERTIES = 'org.freedesktop.DBus.Properties'
_ITEM = 'org.kde.StatusNotifierItem'
_MENU = 'com.canonical.dbusmenu'


class StatusItem:
    @classmethod
    def find(cls, desktop):
        """The first item in the status area, or None."""
        items = call(desktop.bus, 'org.kde.StatusNotifierWatcher', '/StatusNotifierWatcher', _PROPERTIES, 'Get',
                     GLib.Variant('(ss)', ('org.kde.StatusNotifierWatcher', 'RegisteredStatusNotifierItems')))[0]
        return cls(desktop, items[0]) if items else None

    def __init__(self, desktop, registered):
        """As the watcher lists it: bus name, "@" and path, or the path alone."""
        self._desktop = desktop
        name, slash, path = registered.partition('/')
        self._path = slash + path
        self._name = name.rstrip('@') or _owner(desktop.bus, self._path)
        self._indicator = f'Object.entries(Main.panel.statusArea).find(([name]) => name.endsWith("{self._path}"))?.[1]'

    def label(self):
        """Dot, blank and text."""
        properties = self._call(self._path, _PROPERTIES, 'GetAll', GLib.Variant('(s)', (_ITEM,)))[0]
        return f"{_dot(properties['IconPixmap'])} {properties['XAyatanaLabel']}"

    def rows(self):
        menu = self._call(self._path, _PROPERTIES, 'Get', GLib.Variant('(ss)', (_ITEM, 'Menu')))[0]
        layout = self._call(menu, _MENU, 'GetLayout', GLib.Variant('(iias)', (0, -1, [])))[1]
        return [_row(properties) for _, properties, _ in layout[2] if properties.get('visible', True)]

    def open_menu(self):
        self._desktop.evaluate(f'{self._indicator}.menu.open(0)')

    def close_menu(self):
        self._desktop.evaluate(f'{self._indicator}.menu.close(0)')

    def choose(self, text, hands):
        """Opens the menu and chooses the row with this text, by mouse."""
        row = f'{self._indicator}.menu._getMenuItems().find(item => item.label?.text === {json.dumps(text)})'
        hands.click(self._indicator)
        hands.click(row)

    def drawn_text(self):
        return self._desktop.evaluate(f'{self._indicator}?._label?.get_text()')

    def drawn_rows(self):
        """The rows of the open menu as the panel shows them."""
        return [DIVIDER if text is None else text for text in self._desktop.evaluate(
            f'{self._indicator}.menu._getMenuItems().filter(item => item.visible)'
            '.map(item => item.label?.visible ? item.label.text : null)')]

    def _call(self, path, interface, method, arguments):
        return call(self._desktop.bus, self._name, path, interface, method, arguments)


def _owner(bus, path):
    """The name of the program on the bus that has an item there."""
    names = call(bus, 'org.freedesktop.DBus', '/org/freedesktop/DBus', 'org.freedesktop.DBus', 'ListNames')[0]
    for name in names:
        if name.startswith(':') and _has_item(bus, name, path):
            return name
    raise NotYet(f'Nobody has an item at {path}.')


def _has_item(bus, name, path):
    try:
        return call(bus, name, path, _PROPERTIES, 'Get', GLib.Variant('(ss)', (_ITEM, 'Id')))
    except NotYet:
        return False


def _row(properties):
    if properties.get('type') == 'separator':
        return DIVIDER
    # An underscore marks a shortcut key; doubled, it is one. The desktop undoes the first pair alone.
    return properties['label'].replace('__', '_', 1)


def _dot(pixmaps):
    """The symbol whose colour the picture has in its middle."""
    width, height, pixels = max(pixmaps)
    middle = 4 * (height // 2 * width + width // 2)
    _, red, green, blue = pixels[middle:middle + 4]
    if min(red, green, blue) > 180:
        return '⚪'
    return '🟢' if green > red else '🔴'
