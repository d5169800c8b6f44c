# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""The program beside its model: every command goes to both, and what they say must be the same."""

import collections
import time

from model import finite_or_none, integer_or_none, text_or_none
from replies import SILENCE

KINDS = {"accessToken": text_or_none, "adAccountId": text_or_none, "staleThresholdMinutes": integer_or_none,
         "lastImpressions": integer_or_none, "lastChangeTimestamp": finite_or_none}

REMEMBERED = ("lastImpressions", "lastChangeTimestamp")


class Divergence(Exception):
    pass


class Watch:
    def __init__(self, model, polls, program, service, file):
        self.model, self.polls, self.program, self.service, self.file = model, polls, program, service, file
        self.planned = collections.Counter()
        self.commands = 0
        self._requested = []
        self._silence_ends = True
        service.on_request = self._note_request

    # What goes to both

    def launch(self, choose_reply):
        self.program.start(self.service.origin)
        self.polls.restart()
        self.model.relaunch()
        self.model.store.text("accessToken")  # the program looks into its preferences at once
        at_first = self._expected()
        self.model.log.clear()
        self._announce(self.model.start_up(), choose_reply)
        self.program.order("launch", self.model.now)
        self._compare(at_first)
        self._settle()

    def perform(self, what, operation, choose_reply, **more):
        """A command that goes to the network, with the replies to its fetches."""
        result = self._announce(operation, choose_reply)
        self._order(what, **more)
        self._settle(result or "")

    def perform_quietly(self, what, **more):
        """A command of which nothing comes: the program does not even look at its file."""
        self._order(what, **more)
        self._compare({key: value for key, value in self._expected().items() if key not in REMEMBERED})
        self.commands += 1

    def _order(self, what, **more):
        if what == "tick":
            what, more = "pass", {**more, "milliseconds": self.polls.tick()}
        self.program.order(what, self.model.now, **more)

    def perform_overlapping(self, choose_reply):
        """A poll and a refresh from the menu at once. The first to be answered is delivering."""
        self.service.hold()
        self._order("tick")
        self.program.order("refresh", self.model.now)
        first, second = self.model.refresh(), self.model.refresh()
        fetches = [next(first), next(second)]
        self._wait_for_held(2)
        weeks = [self._answer_held(first, fetches[0], choose_reply("today", clean=True))]
        self._wait_for_held(2)
        weeks.append(self._answer_held(second, fetches[1], choose_reply("today")))
        weeks = [week for week in weeks if week]
        self._wait_for_held(len(weeks))
        reply = choose_reply("last_7d")  # the same for both, because either may be the last to arrive
        for operation, week in zip([first, second], weeks):
            self._answer_held(operation, week, reply)
        self._settle()

    def perform_with_edit_amid(self, edit, choose_reply):
        """A poll between whose two fetches the credentials change."""
        self.service.hold()
        self._order("tick")
        poll = self.model.refresh()
        fetch = next(poll)
        self._wait_for_held(1)
        edit()
        while fetch:
            fetch = self._answer_held(poll, fetch, choose_reply(fetch.preset))
            self._wait_for_held(1 if fetch else 0)
        self._settle()

    def perform_cut_off(self, asleep, choose_reply):
        """A poll during whose first fetch the machine sleeps. It ends by its time-out, and begins anew."""
        self.service.hold()
        self._order("tick")
        poll = self.model.refresh()
        fetch = next(poll)
        self._wait_for_held(1)
        self.service.held.clear()
        self.service.lose_connections()
        self.polls.sleep(asleep)
        self.program.order("sleep", self.model.now, milliseconds=asleep, quiet=True)
        self.program.order("time out", self.model.now, quiet=True)
        while fetch:
            self._wait_for_held(1)
            fetch = self._answer_held(poll, fetch, choose_reply(fetch.preset))
        self._settle()

    def _wait_for_held(self, count):
        self.program.wait_until(lambda: len(self.service.held) >= count, f"{count} requests")

    def _answer_held(self, operation, fetch, reply):
        """The fetch that follows, if any."""
        self.planned[fetch.preset, reply.kind] += 1
        self.service.answer_held(fetch, reply)
        try:
            return operation.send(reply.outcome)
        except StopIteration:
            return None

    def edit(self, key, value):
        """An edit in the Settings window."""
        self.model.store.write(key, value, KINDS[key])
        self.program.order(key, self.model.now, value=str(value))
        self._settle()

    # Death

    def kill(self):
        self.program.kill()
        self.service.hang_up()
        self.model.relaunch()

    def kill_amid(self, what, operation, choose_reply, requested, delay):
        """SIGKILL some time after a request, or after the command where none is named. Tells how far the program's
        writes had come."""
        before = self._begin_history()
        exchanges, _ = foretell(operation, choose_reply)
        self.service.expect(exchanges, counted=False)
        self._requested.clear()
        self._silence_ends = False
        self._order(what)
        if requested:
            self.program.wait_until(lambda: requested in self._requested, f"the request for {requested}")
        self._silence_ends = True
        wait_busily(delay)
        return self._bury(before)

    def kill_amid_edit(self, key, value, delay):
        before = self._begin_history()
        self.model.store.write(key, value, KINDS[key])
        self.program.order(key, self.model.now, value=value)
        wait_busily(delay)
        return self._bury(before)

    def die_at_change(self, number, choose_reply):
        """A poll amid which the program dies by its own hand, before that change."""
        before = self._begin_history()
        exchanges, _ = foretell(self.model.refresh(), choose_reply)
        self.service.expect(exchanges, counted=False)
        self._order("tick", changesToLive=number)
        self.program.wait_for_death()
        return self._bury(before)

    def _begin_history(self):
        self.model.store.history.clear()
        return dict(self.model.store.file)

    def _bury(self, before):
        written = [before, *self.model.store.history]
        self.kill()
        return self._adopt(written)

    def _adopt(self, possible):
        """After a death the file is what it was before or after one of the writes, and whole."""
        found = self.file.values()
        steps = [step for step, values in enumerate(possible) if is_same(comparable(values), comparable(found))]
        if not steps:
            raise Divergence(f"after a death the preferences are\n  {found}\nand were, in this order,\n  {possible}")
        require(self.file.wider_than_the_user(), [], "others can read or write")
        self.model.store.replace(self.file)
        self.model.store.history.clear()
        self.model.log.clear()
        self.model.alerts.clear()
        return f"{steps[-1]} of {len(possible) - 1} writes done"

    # Comparing

    def _announce(self, operation, choose_reply):
        exchanges, result = foretell(operation, choose_reply)
        self._requested.clear()
        self.planned.update((fetch.preset, reply.kind) for fetch, reply in exchanges)
        self.service.expect(exchanges)
        return result

    def _settle(self, test_result=""):
        """Waits for the end of the command and compares everything that can be seen from outside."""
        self._compare(self._expected(test_result))
        self.model.log.clear()
        self.model.alerts.clear()
        self.commands += 1
        require(self.service.missing(), [], "fetches never made")
        require(comparable(self.file.values()), comparable(self.model.store.file), "the preference file")
        require(self.file.wider_than_the_user(), [], "others can read or write")
        if self.model.store.history:  # something was written
            require(self.file.beside(), [], "left beside the preferences")
            self.model.store.history.clear()

    def _compare(self, expected):
        report, log = self.program.next_report()
        actual = {**report, "log": log,
                  "today": figures(report["today"], self.model.today),
                  "sevenDay": figures(report["sevenDay"], self.model.week),
                  **{key: KINDS[key](report[key]) for key in REMEMBERED}}
        require({key: actual[key] for key in expected}, expected, "the program")

    def _expected(self, test_result=""):
        model, store = self.model, self.model.store
        return {"status": model.status, "label": model.label(), "today": list(model.today),
                "sevenDay": list(model.week), "isLoading": model.is_loading,
                "lastRefresh": "" if model.last_refresh is None else str(model.last_refresh),
                "test": test_result, "alerts": list(model.alerts), "log": list(model.log),
                **{key: KINDS[key](store.found(key)) for key in REMEMBERED}}

    def _note_request(self, fetch, reply):
        self._requested.append(fetch.preset)
        if reply.then == SILENCE and self._silence_ends:
            self.program.order("time out", self.model.now, quiet=True)


def foretell(operation, choose_reply):
    """Runs the model's side of a command: the exchanges that it makes, and its result."""
    exchanges, came = [], None
    try:
        while True:
            fetch = operation.send(came)
            reply = choose_reply(fetch.preset, exchanges[-1][1] if exchanges else None)
            exchanges.append((fetch, reply))
            came = reply.outcome
    except StopIteration as end:
        return exchanges, end.value


def comparable(values):
    """Preferences as what they mean, because numbers can be written in more than one way."""
    meant = {key: KINDS.get(key, text_or_none)(value) for key, value in values.items()}
    return {key: values[key] if value is None else value for key, value in meant.items()}


def figures(texts, like):
    return [type(model)(text) for text, model in zip(texts, like, strict=True)]


def is_same(one, other):
    """Compared as text, in which "nan" equals itself and 0 is not 0.0."""
    if isinstance(one, dict):
        return sorted(map(repr, one.items())) == sorted(map(repr, other.items()))
    return repr(one) == repr(other)


def require(actual, expected, what):
    if is_same(actual, expected):
        return
    if isinstance(expected, dict):
        keys = sorted(key for key in expected.keys() | actual.keys() if not is_same(expected.get(key), actual.get(key)))
        actual, expected = ({key: side.get(key) for key in keys} for side in (actual, expected))
    raise Divergence(f"{what}:\n  expected {expected}\n  found    {actual}")


def wait_busily(seconds):
    """To the microsecond, where sleeping would be too coarse to hit a write."""
    end = time.perf_counter() + seconds
    while time.perf_counter() < end:
        pass
