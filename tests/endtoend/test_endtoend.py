#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""The program as users run it, unmodified, against servers that bear the service's real names.

    test_endtoend.py path/to/vantelo

Runs one step after the other; each starts the program anew. To add one, write a function that takes the stage
and put it into STEPS.
"""

import re
import secrets
import signal
import sys
import time
from pathlib import Path

sys.dont_write_bytecode = True  # the source tree stays clean

import namespace
from events import Failure, expect, wait_until
from figures import (SETUP_ROWS, TODAY_FIELDS, WEEK_FIELDS, delivering, error_rows, failing, figure_rows, release)
from stage import ELSEWHERE, GRAPH, WEBSITE, Stage
from tls_service import SILENCE
from vantelo_process import VanteloProcess

TOKEN = "EAAB" + secrets.token_hex(16)
ACCOUNT = "1234567890"  # stored without "act_"; the request has it

FEED = f"{WEBSITE} /version.json"


def insights(fields, preset):
    return f"{GRAPH} /v21.0/act_{ACCOUNT}/insights?fields={fields}&date_preset={preset}&access_token={TOKEN}"


TODAY = insights(TODAY_FIELDS, "today")
WEEK = insights(WEEK_FIELDS, "last_7d")
START = [TODAY, WEEK, FEED]  # what one start asks for, in this order


def without_credentials_it_offers_the_setup(stage):
    with stage.start():
        stage.wait_for_requests(1)
        expect(stage.targets(), [FEED], "Requests without credentials")
        expect(list((stage.home / ".config").iterdir()), [], "Files made although nothing was stored")


def with_credentials_it_shows_the_figures(stage):
    stage.graph.answer = delivering(impressions=12345)
    stage.preferences.write(mode=0o644, accessToken=TOKEN, adAccountId=ACCOUNT)
    before = time.time()
    with stage.start():
        stage.wait_for_requests(3)
        expect(stage.targets(), START, "Requests of a start")
        for request in stage.journal:
            expect_plain_get(request)
        expect_remembered(stage, impressions=12345, since=before)
    expect(stage.targets(), START, "Requests until the program ended")


def a_newer_release_does_not_hold_up_the_polls(stage):
    stage.website.answer = release("999.0")
    with start_with_alert(stage):
        pass


def start_with_alert(stage):
    """The program with the alert about a newer release open; Qt's own log tells when its window is drawn."""
    program = stage.start(QT_LOGGING_RULES="qt.widgets.painting=true")
    wait_until(lambda: re.search(r"Flushing .* of QMessageBox", program.output), "the alert's window")
    return program


def start_with_request_in_flight(stage):
    stage.graph.answer = lambda request: SILENCE
    program = stage.start()
    stage.wait_for_requests(1)
    return program


def it_ends_at_once(stage):
    situations = {"": start_idle, " with a request in flight": start_with_request_in_flight,
                  " with an alert open": start_with_alert}
    ways = {"SIGTERM": lambda program: program.send(signal.SIGTERM),
            "SIGINT": lambda program: program.send(signal.SIGINT)}
    for situation, start in situations.items():
        for way, end in ways.items():
            stage.graph.answer = delivering(impressions=12345)
            with start(stage) as program:
                end(program)
                seconds = program.expect_orderly_end(f"by {way}{situation}")
                print(f"    by {way}{situation}: {1000 * seconds:.0f} ms")


def start_idle(stage):
    stage.website.answer = release("0.0.1")
    program = stage.start()
    stage.wait_for_requests(3)
    stage.website.answer = release("999.0")
    return program


def expect_plain_get(request):
    expect(request.method, "GET", f"The method at {request.host}")
    expect(sorted(name for name, _ in request.headers),
           ["Accept-Encoding", "Accept-Language", "Connection", "Host", "User-Agent"], f"Headers at {request.host}")


def expect_remembered(stage, impressions, since):
    stored = stage.preferences.read()
    expect(stored["accessToken"], TOKEN, "The stored token")
    expect(stored["adAccountId"], ACCOUNT, "The stored account")
    expect(stored["lastImpressions"], str(impressions), "The stored impressions")
    if not since <= float(stored["lastChangeTimestamp"]) <= time.time():
        raise Failure(f"The stored time of change is not now but {stored['lastChangeTimestamp']}.")
    expect(oct(stage.preferences.mode()), oct(0o600), "The mode of the preference file")


STEPS = [
    without_credentials_it_offers_the_setup,
    with_credentials_it_shows_the_figures,
    a_newer_release_does_not_hold_up_the_polls,
    it_ends_at_once,
]


def main():
    if len(sys.argv) < 2 or not Path(sys.argv[1]).is_file():
        print(f"FAILED: There is no program {sys.argv[1:2]}; build it: cmake --build build/release --target vantelo")
        return 1
    namespace.enter()
    stage = Stage(sys.argv[1])
    try:
        for step in STEPS:
            print(step.__name__.replace("_", " "), flush=True)
            stage.website.answer = release("0.0.1")
            step(stage)
    except Failure as failure:
        print(f"FAILED: {failure}".replace(TOKEN, "<token>"))
        return 1
    finally:
        stage.close()
    print("passed")
    return 0


sys.exit(main())
