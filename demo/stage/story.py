# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT

"""The scenes of the demo, and how each is waited for, told and pictured."""

import time
from dataclasses import dataclass
from typing import Callable

from .processes import Failure, wait_until
from .statusitem import StatusItem

SECONDS_FOR_A_SCENE = 60


@dataclass
class Scene:
    name: str
    title: str
    begins: Callable[[str, list], bool]
    before: Callable[[], None] = lambda: None


def scenes(write_credentials):
    return [
        Scene('1-setup', 'Nothing is configured yet', lambda label, rows: label == '⚪ Setup'),
        Scene('2-delivering', 'Credentials appear, and with them the figures',
              lambda label, rows: label.startswith('🟢') and '👁️ Impressions: 0' not in rows, write_credentials),
        Scene('3-stopped', 'Nothing has been delivered for more than a quarter of an hour',
              lambda label, rows: label.startswith('🔴')),
        Scene('4-token-expired', 'The access token has expired', lambda label, rows: label == '⚪ ERR'),
    ]


class Storyteller:
    def __init__(self, desktop, program, pictures):
        self._desktop = desktop
        self._program = program
        self._pictures = pictures
        self._began = time.monotonic()

    def tell(self, scene):
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
        self._print(scene, seconds, label, rows)

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

    def _print(self, scene, seconds, label, rows):
        print(f'\n{scene.title} ({seconds:.1f} s)\n\n    {label}')
        for row in rows:
            print(f'    │ {row}')
        print(f'    {self._pictures / scene.name}.png', flush=True)
