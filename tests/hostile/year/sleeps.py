# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""How the machine sleeps and wakes, and where it wakes."""

from machine import PATIENCE

SECOND, MINUTE, HOUR = 1_000, 60_000, 3_600_000


def _sleep_for(shortest, longest):
    """At any moment between two polls."""
    def happen(year):
        _doze_off(year)
        year.sleep(year.dice.randrange(shortest, longest))
    return happen


def _several_in_a_row(year):
    for _ in range(year.dice.randrange(2, 6)):
        _sleep_for(SECOND, year.dice.choice([10 * SECOND, 9 * MINUTE, 9 * HOUR]))(year)


def _just_until_the_poll(year):
    _doze_off(year)
    year.sleep(year.polls.due_in + year.dice.choice([-1, 0, 1, 99, 100, 101]))


def _network_comes_late(year):
    _wake_offline(year)
    year.stay_awake(year.dice.randrange(year.polls.due_in))
    year.come_online()


def _network_does_not_come(year):
    _wake_offline(year)
    year.stay_awake(PATIENCE)
    year.come_online()


def _asleep_again_without_network(year):
    _wake_offline(year)
    for _ in range(3):
        year.stay_awake(year.dice.randrange(year.polls.due_in))
        year.sleep(year.dice.randrange(SECOND, 9 * HOUR))
        if not year.polls.waiting:  # it slept for less than what was left of its patience
            break
    year.come_online()


def _offline_at_an_ordinary_poll(year):
    year.go_offline()
    year.sleep(year.dice.randrange(SECOND, max(2 * SECOND, year.polls.due_in)))
    if not year.polls.waiting:
        year.stay_awake(year.polls.due_in)
    year.come_online()


def _elsewhere(year):
    _doze_off(year)
    year.move_elsewhere()


def _doze_off(year):
    year.stay_awake(year.dice.randrange(year.polls.due_in))


def _wake_offline(year):
    year.go_offline()
    year.sleep(year.polls.due_in + year.dice.randrange(SECOND, 9 * HOUR))


SLEEPS = {
    "asleep for seconds": _sleep_for(SECOND, MINUTE),
    "asleep for minutes": _sleep_for(MINUTE, 30 * MINUTE),
    "asleep over night": _sleep_for(HOUR, 14 * HOUR),
    "asleep for days": _sleep_for(24 * HOUR, 400 * HOUR),
    "asleep several times in a row": _several_in_a_row,
    "asleep just until a poll": _just_until_the_poll,
    "awake before the network": _network_comes_late,
    "awake without a network": _network_does_not_come,
    "asleep again without a network": _asleep_again_without_network,
    "an ordinary poll without a network": _offline_at_an_ordinary_poll,
    "another network while awake": _elsewhere,
}
