#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""The program as users run it, unmodified, against servers that bear the service's real names.

    test_endtoend.py path/to/vantelo

Runs one step after the other; each starts the program anew. To add one, write a function that takes the stage
and put it into STEPS.
"""

import sys
import time
from pathlib import Path

sys.dont_write_bytecode = True  # the source tree stays clean
sys.path.append(str(Path(__file__).resolve().parents[1] / "support"))

from events import Failure, expect, wait_until
from figures import SETUP_ROWS, delivering, error_rows, failing, figure_rows
from scenario import (ACCOUNT, CREDENTIALS, FEED, START, TODAY, TOKEN, WEEK, run, start_and_settle,
                      start_with_alert)
from stage import ELSEWHERE, GRAPH, WEBSITE
from vantelo_process import VanteloProcess

# The program's own lines, the log that start_with_alert() asks for, and the offscreen platform on any window.
WINDOW_RAISED = "This plugin does not support raise()"
EXPECTED_OUTPUT = ("Vantelo: ", "qt.widgets.painting: ", "This plugin does not support ")


def without_credentials_it_offers_the_setup(stage):
    stage.preferences.remove()
    with stage.start() as program:
        stage.panel.wait_for_title("⚪ Setup")
        print(f"    label after {1000 * (time.monotonic() - program.started):.0f} ms")
        stage.panel.wait_for_rows(SETUP_ROWS)
        stage.wait_for_requests(1)
    expect(stage.targets(), [FEED], "Requests without credentials")
    expect(list((stage.home / ".config").iterdir()), [], "Files made although nothing was stored")


def with_credentials_it_shows_the_figures(stage):
    stage.preferences.write(mode=0o644, **CREDENTIALS)  # as a careless program would
    before, connections = time.time(), stage.connections()
    with stage.start() as program:
        stage.panel.wait_for_title("🟢 12,345")
        print(f"    figures after {1000 * (time.monotonic() - program.started):.0f} ms")
        stage.wait_for_requests(3)
        stage.panel.wait_for_rows(figure_rows())
        expect_remembered(stage, impressions=12345, since=before)
        expect_hidden_token(stage, program)
    expect(stage.targets(), START, "Requests of a start")
    for request in stage.journal:
        expect_plain_get(request)
    expect(stage.connections(since=connections), {GRAPH: (1, 1), WEBSITE: (1, 1)}, "Connections, TLS handshakes")


def a_refresh_uses_the_open_connection(stage):
    with start_and_settle(stage):
        connections, ids = stage.connections(), stage.panel.row_ids()
        stage.graph.answer = delivering(impressions=1234567, spend="0.125")
        stage.panel.click("🔄 Refresh")
        stage.panel.wait_for_title("🟢 1,234,567")
        stage.wait_for_requests(5)
        stage.panel.wait_for_rows(figure_rows(spend="$0.12"))
        expect(stage.panel.row_ids(), ids, "The rows' identities, which stay while texts change in place")
    expect(stage.targets(), [*START, TODAY, WEEK], "Requests of a start and a refresh")
    expect(stage.connections(since=connections), {}, "New connections, TLS handshakes")
    expect({request.connection for request in stage.journal if request.host == GRAPH},
           {stage.journal[0].connection}, "The connection of all requests")


def a_refresh_after_a_while_makes_one_connection(stage):
    with start_and_settle(stage):
        stage.graph.hang_up()
        connections = stage.connections()
        stage.graph.answer = delivering(impressions=12346)
        stage.panel.click("🔄 Refresh")
        stage.panel.wait_for_title("🟢 12,346")
        stage.wait_for_requests(5)
    expect(stage.connections(since=connections), {GRAPH: (1, 1)}, "New connections, TLS handshakes")


def hundreds_of_refreshes_pile_up_no_memory(stage):
    def two_hundred_clicks():
        asked = len(stage.journal)
        for _ in range(200):
            stage.panel.click("🔄 Refresh")
        stage.wait_for_requests(asked + 400)

    with start_and_settle(stage) as program:
        for _ in range(5):  # what libraries keep for themselves is there by now
            two_hundred_clicks()
        before = program.private_memory()
        for _ in range(3):
            two_hundred_clicks()
        grown = program.private_memory() - before
        print(f"    {grown // 1024} KiB more after six hundred further clicks")
        if program.is_sanitized():
            return  # the sanitizer keeps back what was freed, and looks for leaks itself
        # The allocator's own ups and downs stay below; six hundred replies or tasks kept alive would not.
        if grown > 2 * 1024 * 1024:
            raise Failure(f"The program has grown by {grown} bytes.")


def a_count_that_stood_still_shows_red_at_once(stage):
    long_ago = time.time() - 16 * 60
    stage.preferences.write(**CREDENTIALS, lastImpressions=12345, lastChangeTimestamp=long_ago)
    with stage.start():
        stage.panel.wait_for_title("🔴 12,345")
        expect(set(stage.panel.titles) - {"⚪ Setup"}, {"🔴 12,345"}, "Titles after the first answer")
        stage.wait_for_requests(3)
        stage.panel.wait_for_rows(figure_rows())
    expect(float(stage.preferences.read()["lastChangeTimestamp"]), long_ago, "The stored time of change")


def an_error_shows_the_services_words(stage):
    words = "(#200) Missing ads_read & <b>ads_management</b> 👨‍👩‍👧‍👦 permission"
    assert len(words) == 60 + 6  # the family is one character to a reader, seven to Python
    stage.graph.answer = failing(words + " needed", status=400)
    with stage.start():
        stage.panel.wait_for_title("⚪ ERR")
        stage.wait_for_requests(2)
        stage.panel.wait_for_rows(error_rows(words))
    expect(stage.targets(), [TODAY, FEED], "Requests of a start that fails")


def a_strangers_certificate_gets_no_request(stage):
    trusted, stage.graph.context = stage.graph.context, stage.stranger.server_context(GRAPH)
    try:
        with stage.start() as program:
            stage.panel.wait_for_title("⚪ ERR")
            stage.wait_for_requests(1)
            stage.panel.wait_for_rows(error_rows("Network error: A secure connection to the server could not b"))
            expect_hidden_token(stage, program)
        expect(stage.targets(), [FEED], "Requests")
    finally:
        stage.graph.context = trusted


def an_open_alert_does_not_hold_up_a_refresh(stage):
    with start_with_alert(stage):
        stage.graph.answer = delivering(impressions=12346)
        stage.panel.click("🔄 Refresh")
        stage.panel.wait_for_title("🟢 12,346")
        stage.wait_for_requests(5)
    expect(stage.targets(), [*START, TODAY, WEEK], "Requests around an alert")


def a_second_launch_brings_up_settings_of_the_first(stage):
    with start_and_settle(stage) as first:
        second = VanteloProcess(stage.binary, stage.environment)
        second.expect_orderly_end("of a second launch")
        expect(second.output, "", "What the second launch wrote")
        wait_until(lambda: WINDOW_RAISED in first.output, "the first one's Settings window")
        stage.panel.click("🔄 Refresh")
        stage.wait_for_requests(5)
        expect(first.ended, False, "Whether the first has ended")
    expect(stage.targets(), [*START, TODAY, WEEK], "Requests of two launches and a refresh")


def the_token_went_nowhere_else(stage):
    stage.monitor.stop()
    messages = stage.monitor.messages()
    expect("🟢 12,345".encode() in messages, True, "Whether the bus was watched")
    expect(TOKEN.encode() in messages, False, "Whether the token went over the session bus")
    for run in VanteloProcess.runs:
        expect(TOKEN in run.output, False, "Whether the token was written to standard output")
        expect([line for line in run.output.splitlines() if not line.startswith(EXPECTED_OUTPUT)], [],
               "Lines on standard output and error that nobody expects")
    holders = [path for path in stage.home.rglob("*") if path.is_file() and TOKEN.encode() in path.read_bytes()]
    expect(holders, [stage.preferences.path], "Files that hold the token")
    expect([host for host in ELSEWHERE if stage.services[host].connections], [], "Hosts visited without a click")


def expect_plain_get(request):
    expect(request.method, "GET", f"The method at {request.host}")
    expect(sorted(name for name, _ in request.headers),
           ["Accept", "Accept-Encoding", "Host", "User-Agent"], f"Headers at {request.host}")


def expect_remembered(stage, impressions, since):
    stored = stage.preferences.read()
    expect(stored["accessToken"], TOKEN, "The stored token")
    expect(stored["adAccountId"], ACCOUNT, "The stored account")
    expect(stored["lastImpressions"], str(impressions), "The stored impressions")
    if not since <= float(stored["lastChangeTimestamp"]) <= time.time():
        raise Failure(f"The stored time of change is not now but {stored['lastChangeTimestamp']}.")
    expect(oct(stage.preferences.mode()), oct(0o600), "The mode of the preference file")


def expect_hidden_token(stage, program):
    expect(TOKEN.encode() in program.command_line(), False, "Whether the token stands on the command line")
    expect(program.output, "", "What the program wrote")


STEPS = [
    without_credentials_it_offers_the_setup,
    with_credentials_it_shows_the_figures,
    a_refresh_uses_the_open_connection,
    a_refresh_after_a_while_makes_one_connection,
    hundreds_of_refreshes_pile_up_no_memory,
    a_count_that_stood_still_shows_red_at_once,
    an_error_shows_the_services_words,
    a_strangers_certificate_gets_no_request,
    an_open_alert_does_not_hold_up_a_refresh,
    a_second_launch_brings_up_settings_of_the_first,
    the_token_went_nowhere_else,
]


sys.exit(run(STEPS))
