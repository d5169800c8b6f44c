# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""Chance that forgets nobody: every card comes once before any comes again."""


class Deck:
    def __init__(self, cards, dice):
        self._cards = list(cards)
        self._dice = dice
        self._left = []

    def deal(self):
        if not self._left:
            self._left = self._dice.sample(self._cards, len(self._cards))
        return self._left.pop()
