# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""What the program should do, said once more in other words and another language.

The rules stand here as they are promised to users, not as the program implements them, and share no code with it.
Whatever goes to the network is a generator that yields each fetch and is sent what came of it, so that the steps of
two refreshes can be told apart when they overlap.
"""

import json
import math
from dataclasses import dataclass, field

from numbers_in_text import amount, integer_or_none, real_or_none, whole_number

CANNOT_SAVE = "Vantelo: The preferences cannot be saved; changes last until the program ends."
CANNOT_READ = "Vantelo: Parts of the preference file cannot be read; they stay in it as they are."
WRONG_FORMAT = "The data couldn’t be read because it isn’t in the correct format."
MISSING = "The data couldn’t be read because it is missing."
RUNNING_VERSION = [1, 0, 0]

NO_FIGURES_TODAY = (0, 0.0, 0, 0.0)
NO_FIGURES_WEEK = (0.0, 0, 0.0, 0, 0.0, 0.0, 0)


@dataclass(frozen=True)
class Fetch:
    preset: str  # "today", "last_7d" or "feed"
    target: str


@dataclass(frozen=True)
class Arrived:
    """A whole body, with whatever status."""
    body: bytes


@dataclass(frozen=True)
class Failed:
    """No body; the sentence for the user."""
    sentence: str


class Undecodable(Exception):
    pass


@dataclass
class Store:
    """The preferences: what stands in the file, and what could not be saved and lives on in memory."""

    file: dict = field(default_factory=dict)
    known: dict = field(default_factory=dict)  # the file as it was last read
    damaged: bool = False  # some line of the file means nothing
    unseen: bool = True  # the file as it is now has not been read yet
    readable: bool = True
    writable: bool = True
    unsaved: dict = field(default_factory=dict)
    told: bool = False
    log: list = field(default_factory=list)
    history: list = field(default_factory=list)  # the file after each write, for a program that is killed amid them

    def replace(self, file):
        """Another program has changed the file, or removed it."""
        self.file, self.damaged, self.unseen = file.values(), file.is_damaged(), True

    def text(self, key):
        found = self._find(key)
        return found if isinstance(found, str) else ""

    def integer(self, key, default):
        found = integer_or_none(self._find(key))
        return default if found is None else found

    def real(self, key, default):
        found = finite_or_none(self._find(key))
        return default if found is None else found

    def write(self, key, value, kind):
        """Writes unless the very value stands there. A value of another kind is no value."""
        if kind(self._find(key)) != value:
            self.write_together({key: value})

    def write_together(self, values):
        """All or none of them reaches the file."""
        self.unsaved.update({key: value if isinstance(value, str) else repr(value) for key, value in values.items()})
        self._save()
        if self.unsaved and not self.told:
            self.log.append(CANNOT_SAVE)
        self.told = bool(self.unsaved)

    def found(self, key):
        """As it stands, of whatever kind."""
        return self.unsaved.get(key, (self.file if self.readable else self.known).get(key))

    def forget(self):
        """The program has ended."""
        self.unsaved.clear()
        self.known = {}
        self.told = False
        self.unseen = True

    def _find(self, key):
        self._save()
        if self.readable:
            self.known = self.file
            if self.unseen and self.damaged:
                self.log.append(CANNOT_READ)
            self.unseen = False
        return self.found(key)

    def _save(self):
        if self.unsaved and self.writable:
            self.file.update(self.unsaved)
            self.unsaved.clear()
            self.history.append(dict(self.file))


def finite_or_none(found):
    """A time."""
    number = real_or_none(found)
    return number if number is not None and math.isfinite(number) else None


def text_or_none(found):
    return found if isinstance(found, str) else None


class Model:
    def __init__(self):
        self.store = Store()
        self.now = 0.0
        self.log = self.store.log
        self.relaunch()

    def relaunch(self):
        self.store.forget()
        self.status = "noConfig"
        self.today = NO_FIGURES_TODAY
        self.week = NO_FIGURES_WEEK
        self.last_refresh = None
        self.is_loading = False
        self.alerts = []

    # Operations

    def start_up(self):
        yield from self.refresh()
        yield from self.check_for_updates()

    def refresh(self):
        if not self.has_credentials():
            self.status = "noConfig"
            return
        self.is_loading = True
        account = self.account()
        fetched = yield from self._insights("today", account)
        if isinstance(fetched, Failed):
            self.status = f"error: {fetched.sentence}"
            self.is_loading = False
            return
        self._remember(fetched[0])
        self.today = fetched
        self.last_refresh = int(self.now * 1000.0)
        self.status = self._health()
        week = yield from self._insights("last_7d", account)
        if not isinstance(week, Failed):
            self.week = week
        self.is_loading = False

    def test_connection(self):
        """Ends with the message for the user."""
        if not self.has_credentials():
            return "Please enter both fields"
        fetched = yield from self._insights("today", self.account())
        if isinstance(fetched, Failed):
            return fetched.sentence
        yield from self.refresh()
        return "success"

    def check_for_updates(self):
        """The silent check of the start-up."""
        came = yield Fetch("feed", "/version.json")
        try:
            if isinstance(came, Failed):
                raise Undecodable(came.sentence)
            version = _feed_version(came.body)
        except Undecodable as failure:
            self.log.append(f"Vantelo: Failed to check for updates - {failure}")
            return
        if _is_newer(version):
            self.alerts.append("New Update Available")

    # Rules

    def has_credentials(self):
        return bool(self.store.text("accessToken")) and bool(self.store.text("adAccountId"))

    def account(self):
        stored = self.store.text("adAccountId")
        return stored if stored.startswith("act_") else "act_" + stored

    def label(self):
        if self.status.startswith("error"):
            return "⚪ ERR"
        if self.status == "noConfig":
            return "⚪ Setup"
        return f"{'🟢' if self.status == 'ok' else '🔴'} {self.today[0]:,}"

    def _remember(self, impressions):
        before = self.store.integer("lastImpressions", 0)
        changed = self.store.real("lastChangeTimestamp", 0.0)
        fresh = {}
        if impressions - before > 0 or changed == 0.0:
            fresh["lastChangeTimestamp"] = self.now
        if impressions != before or integer_or_none(self.store.found("lastImpressions")) is None:
            fresh["lastImpressions"] = impressions
        self.store.write_together(fresh)

    def _health(self):
        changed = self.store.real("lastChangeTimestamp", 0.0)
        if not changed > 0.0:
            return "ok"
        minutes = (self.now - changed) / 60.0
        return "stale" if minutes > float(self.store.integer("staleThresholdMinutes", 15)) else "ok"

    def _insights(self, preset, account):
        target = insights_target(preset, account, self.store.text("accessToken"))
        if " " in target:  # no valid address
            return Failed("Invalid API URL")
        came = yield Fetch(preset, target)
        if isinstance(came, Failed):
            return Failed(f"Network error: {came.sentence}")
        return insights(preset, came.body)


def insights_target(preset, account, token):
    fields = {"today": "impressions,spend,inline_link_clicks,cost_per_inline_link_click",
              "last_7d": "spend,impressions,frequency,reach,cost_per_inline_link_click,inline_link_click_ctr,actions"}
    return f"/v21.0/{account}/insights?fields={fields[preset]}&date_preset={preset}&access_token={token}"


def insights(preset, body):
    """The figures, or the failure that the user is told."""
    try:
        rows, error = _decode(body)
    except Undecodable as failure:
        return Failed(f"Network error: {failure}")
    if error is not None:
        message = error.get("message")
        return Failed("Unknown API error" if message is None else message)
    if not rows:
        return NO_FIGURES_TODAY if preset == "today" else NO_FIGURES_WEEK
    return _today(rows[0]) if preset == "today" else _week(rows[0])


def _today(row):
    return (whole_number(row.get("impressions")), amount(row.get("spend")),
            whole_number(row.get("inline_link_clicks")), amount(row.get("cost_per_inline_link_click")))


def _week(row):
    return (amount(row.get("spend")), whole_number(row.get("impressions")), amount(row.get("frequency")),
            whole_number(row.get("reach")), amount(row.get("cost_per_inline_link_click")),
            amount(row.get("inline_link_click_ctr")), _results(row.get("actions") or []))


def _results(actions):
    return sum(whole_number(action.get("value")) for action in actions
               if action.get("action_type") in ("lead", "purchase", "complete_registration"))


def _decode(body):
    """The rows and the error object of a body; each member is absent, or of its one type."""
    whole = _json_object(body)
    rows = _member(whole, "data", list) or []
    for row in rows:
        _expect_object(row)
        for name in ("impressions", "spend", "inline_link_clicks", "cost_per_inline_link_click", "frequency", "reach",
                     "inline_link_click_ctr"):
            _member(row, name, str)
        for action in _member(row, "actions", list) or []:
            _expect_object(action)
            _member(action, "action_type", str)
            _member(action, "value", str)
    error = _member(whole, "error", dict)
    if error is not None:
        _member(error, "message", str)
        _member(error, "type", str)
        _member(error, "code", int)
    return rows, error


def _feed_version(body):
    feed = _json_object(body)
    for name in ("version", "download_url"):
        if _member(feed, name, str) is None:
            raise Undecodable(MISSING)
    _member(feed, "release_notes", str)
    return feed["version"]


def _is_newer(version):
    numbers = [number for piece in version.split(".") if (number := integer_or_none(piece)) is not None]
    length = max(len(numbers), len(RUNNING_VERSION))
    return _padded(numbers, length) > _padded(RUNNING_VERSION, length)


def _padded(numbers, length):
    return numbers + [0] * (length - len(numbers))


def _json_object(body):
    try:
        decoded = json.loads(body.decode("utf-8"))
    except ValueError:
        raise Undecodable(WRONG_FORMAT) from None
    if not isinstance(decoded, dict):
        raise Undecodable(WRONG_FORMAT)
    return decoded


def _member(record, name, kind):
    value = record.get(name)
    if kind is int and isinstance(value, float) and value.is_integer():
        return value
    if value is not None and (not isinstance(value, kind) or isinstance(value, bool)):
        raise Undecodable(WRONG_FORMAT)
    return value


def _expect_object(value):
    if value is None:
        raise Undecodable(MISSING)
    if not isinstance(value, dict):
        raise Undecodable(WRONG_FORMAT)
