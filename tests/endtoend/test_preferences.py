#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""The preference file between the program and others: locks, flushes to disk, and a Settings window that is open.

    test_preferences.py path/to/vantelo
"""

import fcntl
import re
import sys
import time
from pathlib import Path

sys.dont_write_bytecode = True  # the source tree stays clean
sys.path.append(str(Path(__file__).resolve().parents[1] / "support"))

import namespace
from desktop import Atspi, Desktop
from events import expect, poll_until
from scenario import ACCOUNT, CREDENTIALS, TOKEN, run, start_and_settle

BUTTON, ACCOUNT_FIELD = Atspi.Role.PUSH_BUTTON, (Atspi.Role.TEXT, "Ad Account ID")
OTHER_ACCOUNT = "99887766"
CANNOT_SAVE = "Vantelo: The preferences cannot be saved"


def a_lock_that_a_killed_program_left_holds_nothing_up(stage):
    for what, content in {"an empty one": b"", "one of a dead process": b"4194305\nvantelo\nhost\n"}.items():
        stage.preferences.write(**CREDENTIALS)
        lock_of(stage).write_bytes(content)
        with start_and_settle(stage) as program:
            poll_until(lambda: stage.preferences.holds({"lastImpressions": "12345"}), f"the count, beside {what}")
            seconds = time.monotonic() - program.started
            print(f"    stored {1000 * seconds:.0f} ms after the start, beside {what}")
            expect(seconds < 10, True, f"Whether the count was stored soon, beside {what}")
            expect(CANNOT_SAVE in program.output, False, f"Whether a failure was told, beside {what}")
        expect(lock_of(stage).exists(), False, f"Whether {what} is still there")


def the_lock_of_a_living_program_is_respected_and_holds_nothing_up(stage):
    with lock_of(stage).open("w") as lock:
        fcntl.flock(lock, fcntl.LOCK_EX)
        with start_and_settle(stage) as program:
            poll_until(lambda: CANNOT_SAVE in program.output, "the failure to be told")
            program.send(15)
            program.expect_orderly_end("with a lock that is taken")
        expect(stage.preferences.read(), CREDENTIALS, "The file that another program had locked")
    lock_of(stage).unlink()


def what_is_stored_is_flushed_once_before_it_takes_its_place(stage):
    log = namespace.private_folder("calls") / "strace"
    calls = "trace=fsync,fdatasync,rename,renameat,renameat2"
    with start_and_settle(stage, ["strace", "-f", "-y", "-o", str(log), "-e", calls]) as program:
        stage.panel.click("Quit Vantelo")
        program.expect_orderly_end("by Quit", within=10)
    found = re.findall(r'(f(?:data)?sync|rename\w*)\((?:\d+<)?.*?/(Vantelo\.conf[.\w]*)', log.read_text())
    expect(found, [("fsync", "Vantelo.conf.new"), ("rename", "Vantelo.conf.new")], "Flushes and renamings")


def settings_shows_what_another_program_stores(stage):
    with Desktop() as desktop, start_and_settle(stage, **desktop.environment) as program:
        before = kernel_watches(program)
        stage.panel.click("Settings…")
        desktop.focus(*ACCOUNT_FIELD)
        expect(kernel_watches(program), before + 1, "Watches over files while Settings is open")
        stage.preferences.write(**(CREDENTIALS | {"adAccountId": OTHER_ACCOUNT}))
        poll_until(lambda: OTHER_ACCOUNT in desktop.texts(), "the account that another program stored")
        desktop.keys("End", "7")
        poll_until(lambda: stage.preferences.holds({"adAccountId": OTHER_ACCOUNT + "7", "accessToken": TOKEN}), "a key")
        stage.preferences.write(**CREDENTIALS)
        asked = len(stage.journal)
        desktop.press(BUTTON, "Test Connection")  # at once
        desktop.wait_for(Atspi.Role.NOTIFICATION, "Connected successfully!")
        for request in stage.journal[asked:]:
            expect(f"/act_{ACCOUNT}/" in request.target, True, "Whether the account on the screen was tested")
        expect(ACCOUNT in desktop.texts(), True, "Whether it is on the screen")
        desktop.close_window("Vantelo Settings")
        poll_until(lambda: kernel_watches(program) == before, "the end of the watch over the file")


def lock_of(stage):
    return Path(f"{stage.preferences.path}.lock")


def kernel_watches(program):
    """Descriptors with which the kernel tells of changed files."""
    links = [descriptor.readlink() for descriptor in Path(f"/proc/{program.pid}/fd").iterdir()]
    return sum("inotify" in str(link) for link in links)


STEPS = [
    a_lock_that_a_killed_program_left_holds_nothing_up,
    the_lock_of_a_living_program_is_respected_and_holds_nothing_up,
    what_is_stored_is_flushed_once_before_it_takes_its_place,
    settings_shows_what_another_program_stores,
]


sys.exit(run(STEPS))
