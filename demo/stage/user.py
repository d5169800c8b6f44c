# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT

"""The user of the headless desktop, who sees what is there and has a mouse and a keyboard."""

from .hands import ESCAPE, SPACE, TAB, Hands
from .preferences import credentials, preferences
from .processes import Failure, wait_until
from .screenreader import ScreenReader
from .statusitem import StatusItem

SETTINGS = 'Vantelo Settings'
GUIDE = 'Setup Guide'
SECONDS_TO_REACT = 20


class User:
    def __init__(self, desktop):
        self._desktop = desktop
        self._hands = Hands(desktop)
        self._reader = ScreenReader(desktop)

    def enter_credentials(self):
        """Opens Settings from the menu, types the credentials and tests them; tells what the window then shows."""
        StatusItem.find(self._desktop).choose('Open Settings…', self._hands)
        self._await_front(SETTINGS)
        for name, text in zip(('Access Token', 'Ad Account ID'), credentials()):
            self._tab_to(SETTINGS, name)
            self._hands.type(text)
        wait_until(lambda: preferences(self._desktop.environment).credentials() == credentials(), SECONDS_TO_REACT,
                   'The program did not store what was typed.')
        self._press_button(SETTINGS, 'Test Connection')
        return self._await_text(SETTINGS, 'Connected successfully!')

    def open_guide(self):
        """Opens the setup guide from Settings and tells what it shows."""
        self._press_button(SETTINGS, 'Setup Guide')
        self._await_front(GUIDE)
        texts = self._await_text(GUIDE, 'Getting Your Meta API Credentials')
        return [text for text in texts if text.startswith(('Getting', 'Step'))]

    def close_windows(self):
        """Closes one window after the other."""
        while title := self._front():
            self._hands.press(ESCAPE)
            wait_until(lambda: self._front() != title, SECONDS_TO_REACT, f'Escape did not close “{title}”.')

    def _press_button(self, window, name):
        self._tab_to(window, name)
        self._hands.press(SPACE)

    def _tab_to(self, window, name):
        """Presses Tab until the control has the focus."""
        seen = set()
        while (focused := self._await_focus(window)) != name:
            if focused in seen:
                raise Failure(f'The keyboard does not reach “{name}” in “{window}”.')
            seen.add(focused)
            self._hands.press(TAB)
            wait_until(lambda: self._await_focus(window) != focused, SECONDS_TO_REACT,
                       f'Tab does not leave “{focused}” in “{window}”.')

    def _await_focus(self, window):
        return wait_until(lambda: self._reader.focused(window), SECONDS_TO_REACT, f'“{window}” has no focus.')

    def _await_front(self, title):
        wait_until(lambda: self._front() == title, SECONDS_TO_REACT, f'“{title}” did not come to the front.')

    def _await_text(self, window, text):
        def texts():
            found = self._reader.texts(window)
            return found if text in found else None
        return wait_until(texts, SECONDS_TO_REACT, f'“{window}” did not show “{text}”.')

    def _front(self):
        """The title of the window that has the focus; empty for none."""
        return self._desktop.evaluate("global.display.focus_window?.title ?? ''")
