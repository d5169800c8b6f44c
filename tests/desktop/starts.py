#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""Many starts of a whole desktop, each in a session of its own: is the item there every time, with its text?

    starts.py HOST path/to/vantelo COUNT [LOAD]

HOST is a file in hosts/. The program comes before the panel and after it, by turns, in each of its four states. LOAD
is how many processes keep the machine busy meanwhile (0). Prints a line for each start, and the count; a start that
fails leaves a picture in the current folder.
"""

import importlib
import os
import signal
import subprocess
import sys
import tempfile
import time
from pathlib import Path

sys.dont_write_bytecode = True  # the source tree stays clean
HERE = Path(__file__).resolve().parent
sys.path[:0] = [str(HERE), str(HERE.parent / "endtoend"), str(HERE.parent / "support"), str(HERE.parents[1])]

import namespace
from accessible import AccessibleScreen
from account import DELIVERING, FAILING, SETUP, STALE, Account
from checks import Checks
from events import Failure
from patience import watch
from vantelo_process import PreferenceFile

ONE = "--start"
PATIENCE = 180  # seconds: a busy machine takes more than one minute to start a desktop
LABELS = [SETUP, FAILING, STALE, DELIVERING]
_BUSY = [sys.executable, "-c", "while True: pass"]


def start(name, program, number):
    """One start; says what was seen."""
    namespace.enter()
    folder = namespace.private_folder("pictures")
    namespace.hide_temporary_files(program, HERE)
    label = LABELS[number // 2 % len(LABELS)]
    host, account = importlib.import_module(f"hosts.{name}").Host(), Account()
    with open(folder / "log", "w", encoding="utf-8") as log:
        host.open(log)
        preferences = PreferenceFile(Path(host.session.environment["XDG_CONFIG_HOME"]))
        preferences.path.parent.parent.mkdir(parents=True, exist_ok=True)
        checks = Checks(host, account, preferences, AccessibleScreen(host.session.bus), program, folder)
        try:
            (_program_first, _panel_first)[number % 2](checks, label)
        except Failure:
            checks.display.grab().save(Path(f"failure of {name} {number + 1}.png"))
            raise


def _program_first(checks, label):
    program = checks.start(label)
    checks.host.start_panel()
    _look(checks, program, label, "program first")


def _panel_first(checks, label):
    checks.host.start_panel()
    watch(lambda: checks.host.session.has_name("org.kde.StatusNotifierWatcher"), "the panel", PATIENCE)
    _look(checks, checks.start(label), label, "panel first")


def _look(checks, program, label, order):
    """What goes with the program was its item, and nothing else of that colour."""
    began = time.monotonic()
    checks.expect_item(label, PATIENCE)
    seconds = time.monotonic() - began
    program.send(signal.SIGTERM)
    checks.the_item_goes_with_the_program(label)
    print(f"{order}, {label}: there after {seconds:.1f} s", flush=True)


def main():
    name, program = sys.argv[1], Path(sys.argv[2]).resolve()
    if sys.argv[3] == ONE:
        start(name, program, int(sys.argv[4]))
        return 0
    count, load = int(sys.argv[3]), int((sys.argv[4:] or [0])[0])
    busy = [subprocess.Popen(_BUSY) for _ in range(load)]
    try:
        seen = [_try(name, program, number) for number in range(count)]
    finally:
        for process in busy:
            process.kill()
    print(f"{name}: {sum(seen)} of {count} starts")
    return 0 if all(seen) else 1


def _try(name, program, number):
    """In a process of its own, which leaves nothing behind."""
    with tempfile.TemporaryFile("w+") as said:
        code = subprocess.run([sys.executable, __file__, name, program, ONE, str(number)], stdout=said,
                              stderr=said).returncode
        said.seek(0)
        words = said.read().strip().splitlines() or ["nothing was said"]
    print(f"{number + 1:3} {'yes' if code == 0 else 'NO '} (load {os.getloadavg()[0]:.0f}) {words[-1]}", flush=True)
    return code == 0


try:
    sys.exit(main())
except Failure as failure:
    sys.exit(str(failure))
