# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""A year of polls in a hostile world, every step of it foretold by an independent model of the rules."""

import collections
import random
import selectors
from dataclasses import dataclass

import replies
from account import Account
from deck import Deck
from machine import PollClock
from mishaps import MISHAPS
from model import Failed, Model, finite_or_none, integer_or_none
from preferences import PreferenceFile
from program import Program
from service import Service
from sleeps import SLEEPS
from watch import Watch

FIRST_OF_JANUARY = 1_767_225_600.0  # of 2026
POLL_INTERVAL = 600.0
MONTH = 365 * 24 * 6 // 12  # polls
SECRET = "EAAB"  # stands in every access token of the year
USUAL_THRESHOLDS = [10, 15, 20, 30]

BETWEEN_POLLS = "killed between polls"


@dataclass(frozen=True)
class Death:
    """Where else SIGKILL strikes: after a command, or once it has asked for something."""
    command: str
    fetch: str = None
    answered: bool = True
    most_seconds: float = 0.0
    at_a_change: bool = False  # the program strikes itself, before one of the changes it announces


DEATHS = {
    "while starting": Death("launch", most_seconds=0.2),
    "while asking for today": Death("tick", "today", answered=False),
    "while storing the count": Death("tick", "today", most_seconds=0.003),
    "while storing the count at launch": Death("launch", "today", most_seconds=0.003),
    "at a change": Death("tick", at_a_change=True),
    "while asking for the week": Death("tick", "last_7d", answered=False),
    "while the week arrives": Death("tick", "last_7d", most_seconds=0.001),
    "while asking for the feed": Death("launch", "feed", answered=False),
    "while storing an edit": Death("accessToken", most_seconds=0.002),
}

# What a kill in the middle of a write leaves beside the file. Most kills come a moment too early or too late for it.
LEFT_OVER = {
    "left over: an empty lock": (".lock", b""),
    "left over: a lock": (".lock", b"4194305\nvantelo\nhost\n"),
    "left over: part of a file": (".new", b"[General]\naccessTok"),
}


class Year:
    def __init__(self, binary, disk, seed, polls):
        self._polls = polls
        self.poll = 0
        self.dice = random.Random(f"events {seed}")
        self._packing = random.Random(f"packing {seed}")
        self._account = Account(random.Random(f"account {seed}"))
        self._kinds = {preset: Deck(kinds, self.dice)
                       for preset, kinds in [("today", replies.INSIGHTS_KINDS), ("last_7d", replies.INSIGHTS_KINDS),
                                             ("feed", replies.FEED_KINDS)]}
        self._mishaps, self._deaths = Deck(MISHAPS, self.dice), Deck([*DEATHS, *["at a change"] * 3], self.dice)
        self._sleeps = Deck(SLEEPS, self.dice)
        self._left_over = Deck(LEFT_OVER, self.dice)
        self._changes_to_live = Deck(range(1, 6), self.dice)
        self._faulty = set()  # the presets whose fetches are to go wrong
        self._faults = {}  # and what went wrong with them
        self._mishap, self._mishap_name, self._mishap_ends = None, None, 0
        self._doing = "nothing yet"

        self.now = FIRST_OF_JANUARY
        self.model = Model()
        self.store = self.model.store
        self.file = PreferenceFile(disk)
        selector = selectors.DefaultSelector()
        self.service = Service(selector)
        self.program = Program(binary, disk, selector, SECRET.encode())
        self.polls = PollClock()
        self.watch = Watch(self.model, self.polls, self.program, self.service, self.file)
        self.happened = collections.Counter()
        self.memory = []  # bytes after each poll of the quiet half

    def run(self):
        self.mend_file()
        self._launch()
        for self.poll in range(1, self._polls + 1):
            restless = self.poll <= self._polls // 2  # the rest is one life, long enough for leaks to add up
            if restless and self.dice.random() < 0.08:
                self._die()
            self._befall()
            self._between_polls()
            if self.dice.random() < 0.05:
                self._sleep()
            self._tick()
            if not restless:
                self.memory.append(self.program.private_memory())
            if self.poll % MONTH == 0:
                print(f"{self.poll} polls without divergence", flush=True)
        self.sanitized = self.program.is_sanitized()
        self.program.kill()

    def circumstances(self):
        return f"doing: {self._doing}; faults: {self._faults}; mishap: {self._mishap_name if self._mishap else None}"

    # What the mishaps use

    def edit(self, key, value):
        self.watch.edit(key, value)

    def mend(self):
        """The user sets things right, in Settings or with a file from elsewhere."""
        if self.dice.random() < 0.7:
            return self.mend_file()
        self.edit("accessToken", self.token())
        self.edit("adAccountId", "act_731")
        self.edit("staleThresholdMinutes", self.dice.choice(USUAL_THRESHOLDS))

    def mend_file(self):
        threshold = self.dice.choice([{}, {}, {"staleThresholdMinutes": str(self.dice.choice(USUAL_THRESHOLDS))}])
        sound = {key: value for key, value in self.file.values().items()
                 if isinstance(value, str) and key != "staleThresholdMinutes"}
        self.file.write_values(sound | threshold | {"accessToken": self.token(), "adAccountId": "act_731"})
        self.store.replace(self.file)

    def token(self):
        return f"{SECRET}{self.dice.randrange(2**64):016x}"

    # What a sleep consists of; times in milliseconds

    def stay_awake(self, time):
        self._let_pass("pass", time, self.polls.stay_awake(time))

    def sleep(self, time):
        self.service.lose_connections()
        self._let_pass("sleep", time, self.polls.sleep(time))

    def move_elsewhere(self):
        self.service.lose_connections()
        self._let_pass("move", 0, polls=False)

    def go_offline(self):
        self.polls.online = False
        self._let_pass("offline", 0, polls=False)

    def come_online(self):
        self._let_pass("online", 0, polls=self.polls.come_online())

    def _let_pass(self, what, time, polls):
        self.now += time / 1000
        if polls:
            return self._perform(what, self.model.refresh(), milliseconds=time)
        self._doing, self.model.now = what, self.now
        self.watch.perform_quietly(what, milliseconds=time)

    # Steps

    def _sleep(self):
        name = self._sleeps.deal()
        self.happened[name] += 1
        SLEEPS[name](self)

    def _tick(self):
        self.now += self.polls.due_in / 1000
        chance = self.dice.random()
        if self._mishap or chance > 0.06:
            return self._perform("tick", self.model.refresh())
        if chance > 0.04:
            return self._tick_amid_a_sleep()
        self._begin("tick and refresh at once" if chance < 0.02 else "tick with an edit amid")
        if chance < 0.02:
            return self.watch.perform_overlapping(self._self_contained_reply)
        return self.watch.perform_with_edit_amid(self._edit_amid, self._self_contained_reply)

    def _tick_amid_a_sleep(self):
        asleep = self.dice.randrange(1_000, 599_000)  # no further poll falls due
        self._begin("tick cut off by a sleep", self.now + asleep / 1000)
        self.watch.perform_cut_off(asleep, self._self_contained_reply)
        self.now += asleep / 1000

    def _edit_amid(self):
        self.file.write_values(self.file.values() | {"accessToken": self.token(), "adAccountId": "act_732"})
        self.store.replace(self.file)

    def _between_polls(self):
        chance, some = self.dice.random(), self.now + self.dice.randrange(1, 599_000) / 1000
        edge = self._becomes_stale() + self.dice.choice([-0.001, 0.0, 0.001, 30.0])
        within = self.now < edge < self.now + POLL_INTERVAL
        if chance < 0.03 or within and chance < 0.5:
            self._perform("refresh", self.model.refresh(), edge if within else some)
        elif chance > 0.98:
            self._perform("test", self.model.test_connection(), some)

    def _becomes_stale(self):
        changed = finite_or_none(self.store.found("lastChangeTimestamp")) or 0.0
        threshold = integer_or_none(self.store.found("staleThresholdMinutes"))
        return changed + 60.0 * (15 if threshold is None else threshold)

    def _befall(self):
        if self._mishap and self.poll >= self._mishap_ends:
            next(self._mishap, None)
            self._mishap = None
        elif not self._mishap and self.dice.random() < 0.15:
            self._mishap_name = name = self._mishaps.deal()
            self.happened[name] += 1
            self._mishap, self._mishap_ends = MISHAPS[name](self), self.poll + self.dice.randrange(1, 5)
            self.model.now = self.now
            next(self._mishap)

    def _begin(self, what, moment=None):
        self._doing = what
        self.happened[what] += 1
        self._draw_faults()
        self.model.now = moment or self.now
        self._account.advance(self.model.now)

    def _perform(self, what, operation, moment=None, **more):
        self._begin(what, moment)
        self.watch.perform(what, operation, self._reply, **more)

    def _launch(self):
        self._begin("launch")
        self.watch.launch(self._reply)

    def _die(self):
        if self._mishap:  # the other deaths need a program that gets through to its fetches
            self._doing = BETWEEN_POLLS
            self.happened[self._doing] += 1
            self.watch.kill()
        else:
            name = self._deaths.deal()
            self._doing = f"killed {name}"
            how_far = self._die_amid(DEATHS[name])
            self.happened[f"{self._doing}: {how_far}"] += 1
            left_over = self._left_over.deal()
            self.happened[left_over] += 1
            self.file.leave_over(*LEFT_OVER[left_over])
        self.file.let_time_pass()
        self.now += self.dice.randrange(1, 900_000) / 1000
        self._launch()

    def _die_amid(self, death):
        self.now += POLL_INTERVAL
        self._begin(self._doing)
        self._faulty.clear()
        if death.at_a_change:
            self._account.rise()  # so that both remembered values are written
            return self.watch.die_at_change(self._changes_to_live.deal(), self._reply)
        if death.command == "launch":
            self.watch.kill()
            self.program.start(self.service.origin)
        delay = death.most_seconds * self.dice.random()
        if death.command == "accessToken":
            return self.watch.kill_amid_edit(death.command, self.token(), delay)
        operation = self.model.start_up() if death.command == "launch" else self.model.refresh()
        reply = self._reply if death.answered else self._silent_at(death.fetch)
        return self.watch.kill_amid(death.command, operation, reply, death.fetch, delay)

    # Replies

    def _silent_at(self, silent):
        return lambda preset, _: (replies.faulty("silent", {}, self._packing) if preset == silent
                                  else self._clean_reply(preset))

    def _draw_faults(self):
        chance = self.dice.random()
        self._faulty = {"today"} if chance < 0.2 else {"last_7d"} if chance < 0.4 else set()
        self._faults = {}
        if self.dice.random() < 0.9:
            self._faulty.add("feed")

    def _reply(self, preset, before=None):
        if before and before.then == replies.REFUSE:
            kind = "refused"  # nobody listens again before the next command
        elif preset not in self._faulty:
            return self._clean_reply(preset)
        else:
            kind = self._kinds[preset].deal()
            if kind == "refused" and before and isinstance(before.outcome, Failed):
                kind = "reset"  # Qt may still be repeating the fetch before, and has to find somebody listening
        self._faults[preset] = kind
        return replies.faulty(kind, self._row(preset), self._packing)

    def _clean_reply(self, preset):
        if preset == "feed":
            return replies.clean_feed(self._packing)
        return replies.clean(self._row(preset), self._packing)

    def _self_contained_reply(self, preset, clean=False):
        if clean or preset not in self._faulty:
            return self._clean_reply(preset)
        self._faults[preset] = kind = self.dice.choice(replies.SELF_CONTAINED_KINDS)
        return replies.faulty(kind, self._row(preset), self._packing)

    def _row(self, preset):
        return {} if preset == "feed" else self._account.row(preset)
