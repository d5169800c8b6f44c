# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""What all end-to-end tests share: the credentials, what a start asks for, ways to begin, and the runner."""

import re
import secrets
import sys
from pathlib import Path

import namespace
from events import Failure, wait_until
from figures import SETUP_ROWS, TODAY_FIELDS, WEEK_FIELDS, delivering, figure_rows, release
from stage import GRAPH, WEBSITE, Stage
from tls_service import SILENCE

TOKEN = "EAAB" + secrets.token_hex(16)
ACCOUNT = "1234567890"  # stored without "act_"; the request has it
CREDENTIALS = {"accessToken": TOKEN, "adAccountId": ACCOUNT}

FEED = f"{WEBSITE} /version.json"


def insights(fields, preset):
    return f"{GRAPH} /v21.0/act_{ACCOUNT}/insights?fields={fields}&date_preset={preset}&access_token={TOKEN}"


TODAY = insights(TODAY_FIELDS, "today")
WEEK = insights(WEEK_FIELDS, "last_7d")
START = [TODAY, WEEK, FEED]  # what one start asks for, in this order


def start_and_settle(stage, under=(), **environment):
    program = stage.start(under, **environment)
    stage.wait_for_requests(3)
    stage.panel.wait_for_title("🟢 12,345")
    stage.panel.wait_for_rows(figure_rows())
    return program


def start_with_request_in_flight(stage):
    stage.graph.answer = lambda request: SILENCE
    program = stage.start()
    stage.wait_for_requests(1)
    stage.panel.wait_for_title("⚪ Setup")
    stage.panel.wait_for_rows(SETUP_ROWS)
    return program


def start_with_alert(stage, **environment):
    """A newer release is announced. Qt's own log tells when the alert's window has been drawn."""
    stage.website.answer = release("999.0")
    program = stage.start(QT_LOGGING_RULES="qt.widgets.painting=true", **environment)
    wait_until(lambda: re.search(r"Flushing .* of AlertBox", program.output), "the alert's window")
    stage.panel.wait_for_title("🟢 12,345")
    stage.panel.wait_for_rows(figure_rows())
    stage.website.answer = release("0.0.1")
    return program


def run(steps):
    """Runs one step after the other with the program that the command line names; the exit code.

    Each step gets the stage with everything as a healthy account has it, and starts the program itself.
    """
    if len(sys.argv) < 2 or not Path(sys.argv[1]).is_file():
        print(f"FAILED: There is no program {sys.argv[1:2]}; build it: cmake --build build/release --target vantelo")
        return 1
    namespace.enter()
    stage = Stage(sys.argv[1])
    try:
        for step in steps:
            print(step.__name__.replace("_", " "), flush=True)
            stage.website.answer = release("0.0.1")
            stage.graph.answer = delivering(impressions=12345)
            stage.preferences.write(**CREDENTIALS)
            step(stage)
    except Failure as failure:
        print(f"FAILED: {failure}".replace(TOKEN, "<token>"))
        return 1
    finally:
        stage.close()
    print("passed")
    return 0
