# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT

"""The scenes of the demo, and how each is waited for, told and pictured."""

import time
from dataclasses import dataclass
from pathlib import Path
from typing import Callable

from .picture import shows_green
from .processes import Failure, wait_until
from .statusitem import StatusItem

SECONDS_FOR_A_SCENE = 60


@dataclass
class WindowScene:
    """A scene in a window; what happens gives the texts that the window shows at its end."""
    name: str
    title: str
    happens: Callable[[], list]
    is_drawn: Callable[[Path], bool] = lambda picture: True


@dataclass
class Scene:
    """A scene in the panel and its open menu."""
    name: str
    title: str
    begins: Callable[[str, list], bool]
    before: Callable[[], None] = lambda: None


def scenes(user):
    return [
        Scene('1-setup', 'Nothing is configured yet', lambda label, rows: label == '⚪ Setup'),
        WindowScene('2-settings', 'The user enters the credentials in Settings and tests them', user.enter_credentials,
                    is_drawn=shows_green),
        WindowScene('3-guide', 'The guide tells how to get them', user.open_guide),
        Scene('4-delivering', 'The account delivers, and the figures rise',
              lambda label, rows: label.startswith('🟢') and '👁️ Impressions: 0' not in rows, user.close_windows),
        Scene('5-stopped', 'Nothing has been delivered for more than a quarter of an hour',
              lambda label, rows: label.startswith('🔴')),
        Scene('6-token-expired', 'The access token has expired', lambda label, rows: label == '⚪ ERR'),
    ]


class Storyteller:
    def __init__(self, desktop, program, pictures):
        self._desktop = desktop
        self._program = program
        self._pictures = pictures
        self._began = time.monotonic()

    def tell(self, scene):
        if isinstance(scene, WindowScene):
            self._tell_in_window(scene)
        else:
            self._tell_in_panel(scene)

    def _tell_in_window(self, scene):
        texts = scene.happens()
        seconds = time.monotonic() - self._began
        picture = self._pictures / f'{scene.name}.png'
        self._await(lambda: self._is_settled(picture, scene), f'The scene “{scene.title}” was not drawn.')
        self._print(scene, seconds, texts)

    def _is_settled(self, picture, scene):
        """Whether nothing moves any more: a window tells its texts before the desktop has drawn them."""
        before = picture.exists() and picture.read_bytes()
        self._desktop.screenshot(picture)
        return picture.read_bytes() == before and scene.is_drawn(picture)

    def _tell_in_panel(self, scene):
        scene.before()
        item = self._await(lambda: StatusItem.find(self._desktop), f'No status item appeared for “{scene.title}”.')
        self._await(lambda: scene.begins(item.label(), item.rows()), f'The scene “{scene.title}” did not come.')
        seconds = time.monotonic() - self._began
        item.open_menu()
        label, rows = self._await(lambda: self._shown(item), f'The panel does not show “{scene.title}” as it is told.')
        if not scene.begins(label, rows):
            raise Failure(f'The scene “{scene.title}” was over before it could be pictured.')
        self._desktop.screenshot(self._pictures / f'{scene.name}.png')
        item.close_menu()
        self._print(scene, seconds, [label] + [f'│ {row}' for row in rows])

    def _shown(self, item):
        """Label and rows, once the open menu and the panel show exactly them."""
        label, rows = item.label(), item.rows()
        same = label.partition(' ')[2] == item.drawn_text() and rows == item.drawn_rows()
        return (label, rows) if same else None

    def _await(self, condition, failure):
        def unless_ended():
            if self._program.poll() is not None:
                raise Failure('The demo program ended by itself.')
            return condition()
        return wait_until(unless_ended, SECONDS_FOR_A_SCENE, failure)

    def _print(self, scene, seconds, lines):
        print(f'\n{scene.title} ({seconds:.1f} s)\n')
        for line in lines:
            print(f'    {line}')
        print(f'    {self._pictures / scene.name}.png', flush=True)
