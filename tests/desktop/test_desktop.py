#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""The program as users run it, unmodified, in a real panel: by mouse, by the pixels of the screen, and by what a
screen reader finds.

    test_desktop.py HOST path/to/vantelo folder/for/pictures [LOOK ...]

HOST is a file in hosts/. A host that is not installed is not run (exit code 77). With a LOOK (dark, light, 200%, rtl)
only pictures are taken, for somebody to look at.
"""

import importlib
import json
import shutil
import sys
from pathlib import Path

sys.dont_write_bytecode = True  # the source tree stays clean
HERE = Path(__file__).resolve().parent
sys.path[:0] = [str(HERE), str(HERE.parent / "endtoend"), str(HERE.parent / "support"), str(HERE.parents[1])]

import namespace
from accessible import AccessibleScreen
from account import DELIVERING, FAILING, SETUP, STALE, Account
from checks import Checks
from events import Failure
from look import Look
from vantelo_process import PreferenceFile


class Report:
    """Runs the checks one after the other. A desktop cannot do everything: what it cannot is told, with its reason,
    and fails the test once the desktop can after all. What it does at times fails nothing either way."""

    def __init__(self, host, give_up):
        self._host, self._give_up, self.rows, self.failed = host, give_up, [], False

    def check(self, check, *arguments):
        what = " ".join([check.__name__.replace("_", " "), *arguments])
        never = self._host.cannot.get(check.__name__)
        reason = never or getattr(self._host, "at_times", {}).get(check.__name__)
        try:
            seen, verdict = check(*arguments), "yes"
        except Failure as failure:
            seen, verdict = (reason, "cannot") if reason else (str(failure), "NO")
            self._give_up(what)
        if never and verdict == "yes":
            seen, verdict = f"although the host could not, it is said: {never}", "NO"
        self.failed = self.failed or verdict == "NO"
        self.rows.append((what, verdict, seen))
        print(f"  {verdict:6} {what}: {seen}", flush=True)


def run(checks, report):
    host = checks.host
    with checks.start(DELIVERING):
        report.check(checks.started_before_the_panel_the_item_comes_with_it)
        if report.failed:
            return
        report.check(checks.the_dot_has_its_colour, DELIVERING)
        report.check(checks.a_screen_reader_reads_the_state, DELIVERING)
        report.check(checks.the_text_is_shown)
        report.check(checks.a_click_opens_the_menu, DELIVERING)
        report.check(checks.a_refresh_changes_the_open_menu_in_place)
        checks.refresh_to(DELIVERING, by=checks.item.choose)
        report.check(checks.ads_manager_opens_the_browser)
        report.check(checks.settings_open_in_front)
        report.check(checks.the_guides_link_opens_the_browser)
        report.check(checks.a_new_panel_shows_the_item_again)
        report.check(checks.refresh_leads_to_the_error)
        report.check(checks.the_dot_has_its_colour, FAILING)
        report.check(checks.a_click_opens_the_menu, FAILING)
        checks.refresh_to(STALE, by=checks.item.choose)
        report.check(checks.the_dot_has_its_colour, STALE)
        report.check(checks.a_screen_reader_reads_the_state, STALE)
    report.check(checks.the_item_goes_with_the_program, STALE)
    with checks.start(SETUP):
        report.check(checks.the_dot_has_its_colour, SETUP)
        report.check(checks.a_click_opens_the_menu, SETUP)


def take_pictures(checks):
    with checks.start(DELIVERING):
        checks.started_before_the_panel_the_item_comes_with_it()
        checks.the_text_is_shown()
        for label in (DELIVERING, STALE, FAILING):
            checks.refresh_to(label, by=checks.item.choose)
            checks.the_dot_has_its_colour(label)
            checks.a_click_opens_the_menu(label)
    with checks.start(SETUP):
        checks.both_windows_open()


def run_without_panel(checks, report):
    with checks.start(DELIVERING):
        report.check(checks.a_second_launch_brings_settings_to_the_front)


def main():
    name, program, pictures = sys.argv[1], Path(sys.argv[2]).resolve(), Path(sys.argv[3]).resolve() / sys.argv[1]
    try:
        host = importlib.import_module(f"hosts.{name}").Host()
    except ImportError as error:
        print(f"NOT RUN: a part of the test itself is not installed here: {error}.")
        return namespace.NOT_RUN
    if missing := [needed for needed in host.programs if not shutil.which(needed)]:
        print(f"NOT RUN: {host.name} is not installed here: no {', '.join(missing)}.")
        return namespace.NOT_RUN
    pictures.mkdir(parents=True, exist_ok=True)
    namespace.enter()
    namespace.hide_temporary_files(program, pictures, HERE)
    account, look = Account(), Look.of_words(sys.argv[4:])
    with open(pictures / "log", "w", encoding="utf-8") as log:
        host.open(log, *([look] if look != Look() else []))
        preferences = PreferenceFile(Path(host.session.environment["XDG_CONFIG_HOME"]))
        preferences.path.parent.parent.mkdir(parents=True, exist_ok=True)
        print(host.name, flush=True)
        checks = Checks(host, account, preferences, AccessibleScreen(host.session.bus), look.program(program),
                        pictures)
        report = Report(host, checks.give_up)
        try:
            if look != Look():
                take_pictures(checks)
            else:
                run(checks, report) if host.has_panel else run_without_panel(checks, report)
        except Failure as failure:
            report.failed = True
            print(f"FAILED: {failure}")
            checks.give_up("all")
    (pictures / "report.json").write_text(json.dumps(report.rows, ensure_ascii=False, indent=1))
    return 1 if report.failed else 0


sys.exit(main())
