# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT

"""The user's hands: a mouse and a keyboard that the desktop cannot tell from real ones."""

import json

from .processes import wait_until

TAB = 0xff09
ESCAPE = 0xff1b
SPACE = 0x20

_PLUG_IN = """
const {Clutter, GLib} = imports.gi;
const backend = Clutter.get_default_backend?.() ?? global.stage.get_context().get_backend();
const seat = backend.get_default_seat();
const plugIn = kind => seat.create_virtual_device(Clutter.InputDeviceType[kind]);
const keyboard = plugIn('KEYBOARD_DEVICE');
const pointer = plugIn('POINTER_DEVICE');
const now = () => GLib.get_monotonic_time();
global.demoHands = {
    press: keys => keys.forEach(key => [1, 0].forEach(state => keyboard.notify_keyval(now(), key, state))),
    point: (x, y) => pointer.notify_absolute_motion(now(), x, y),
    pointAt: actor => {
        if (!actor?.mapped)
            return false;
        const [x, y] = actor.get_transformed_position();
        const [width, height] = actor.get_transformed_size();
        const middle = [x + width / 2, y + height / 2].map(Math.round);
        const [pointerX, pointerY] = global.get_pointer();
        if (pointerX === middle[0] && pointerY === middle[1])
            return actor.contains(global.stage.get_actor_at_pos(Clutter.PickMode.REACTIVE, ...middle));
        global.demoHands.point(...middle);
        return false;
    },
    click: () => [1, 0].forEach(state => pointer.notify_button(now(), Clutter.BUTTON_PRIMARY, state)),
};
null;
"""


class Hands:
    def __init__(self, desktop):
        self._desktop = desktop
        desktop.evaluate(_PLUG_IN)

    def press(self, *keys):
        self._desktop.evaluate(f'global.demoHands.press({json.dumps(keys)})')

    def type(self, text):
        self.press(*map(ord, text))

    def click(self, actor):
        """Clicks in the middle of what the expression names in the desktop's shell, once it is to be seen there."""
        wait_until(lambda: self._desktop.evaluate(f'global.demoHands.pointAt({actor})'), 10,
                   f'The pointer did not reach {actor}.')
        self._desktop.evaluate('global.demoHands.click()')
        # Away again, or a row under the pointer would look chosen in a picture.
        self._desktop.evaluate('global.demoHands.point(global.screen_width - 1, global.screen_height - 1)')
