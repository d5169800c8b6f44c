#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""The program under valgrind: start, set-up, refreshes, both windows, end. No error, and nothing lost.

    test_memory.py path/to/vantelo
"""

import subprocess
import sys
from pathlib import Path

sys.dont_write_bytecode = True  # the source tree stays clean
sys.path.append(str(Path(__file__).resolve().parents[1] / "support"))

import events
import namespace
from desktop import Desktop
from events import Failure, expect, poll_until, wait_until
from figures import delivering, error_rows, failing, figure_rows
from scenario import ACCOUNT, TOKEN, run

VALGRIND = ["valgrind", "--quiet", "--error-exitcode=99", "--leak-check=full", "--show-leak-kinds=definite",
            "--errors-for-leak-kinds=definite", "--num-callers=30", "--gen-suppressions=all",
            f"--suppressions={Path(__file__).with_name('valgrind.supp')}"]
if "--show-realloc-size-zero" in subprocess.run(["valgrind", "--help"], capture_output=True, text=True, check=True).stdout:
    VALGRIND.append(f"--suppressions={Path(__file__).with_name('valgrind-3.21.supp')}")

events.PATIENCE = 100.0  # seconds; everything takes its time here


def it_handles_memory_rightly(stage):
    # No code made at run time for regular expressions: it reads vectors beyond the end of a text, as errors to valgrind.
    log = namespace.private_folder("log") / "valgrind"
    stage.preferences.remove()
    with Desktop() as desktop, stage.start(
            under=[*VALGRIND, f"--log-file={log}"], QT_ENABLE_REGEXP_JIT="0", **desktop.screen) as program:
        stage.panel.click("Setup Guide…")
        desktop.close_window("Setup Guide")
        stage.panel.click("Open Settings…")
        desktop.wait_for_screen("Vantelo Settings")
        desktop.type(TOKEN)
        desktop.keys("Tab")
        desktop.type(ACCOUNT)
        poll_until(lambda: stage.preferences.holds({"accessToken": TOKEN, "adAccountId": ACCOUNT}), "the credentials")
        desktop.keys("Tab", "Tab", "Tab", "space")  # past the threshold, to the connection test
        stage.panel.wait_for_title("🟢 12,345")
        stage.panel.wait_for_rows(figure_rows())
        desktop.close_window("Vantelo Settings")
        stage.graph.answer = failing("(#17) User request limit reached", 400)
        stage.panel.click("🔄 Refresh")
        stage.panel.wait_for_rows(error_rows("(#17) User request limit reached"))
        stage.graph.answer = delivering(impressions=12346)
        stage.graph.hang_up()
        stage.panel.click("🔄 Refresh")
        stage.panel.wait_for_rows(figure_rows())
        stage.panel.click("Settings…")
        desktop.wait_for_screen("Vantelo Settings")
        stage.panel.click("Quit Vantelo")
        wait_until(lambda: program.ended, "the end")
    if found := log.read_text():
        raise Failure("valgrind has found:\n" + found)
    expect(program.exit_code, 0, "The exit code")


sys.exit(run([it_handles_memory_rightly]))
