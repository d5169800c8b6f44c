#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""How the program ends, from whatever it is at.

    test_quit.py path/to/vantelo
"""

import os
import signal
import socket
import sys
import time
from pathlib import Path

sys.dont_write_bytecode = True  # the source tree stays clean
sys.path.append(str(Path(__file__).resolve().parents[1] / "support"))

import namespace
from desktop import Atspi, Desktop
from events import expect, poll_until, wait_until
from figures import SETUP_ROWS, delivering
from scenario import CREDENTIALS, run, start_and_settle, start_with_alert, start_with_request_in_flight
from silence import SilentServer
from stage import ADDRESSES
from tls_service import SILENCE, Reply


def it_ends_at_once(stage):
    with Desktop() as desktop:
        end_from(stage, {
            "idle": start_and_settle,
            "a request in flight": start_with_request_in_flight,
            "a large body being decoded": start_with_decode,
            "the menu open": start_with_menu,
            "its own menu open": lambda stage: start_with_own_menu(stage, desktop),
            "an alert open": start_with_alert,
            "both windows open": lambda stage: start_with_windows(stage, desktop),
            "a connection test running": lambda stage: start_with_connection_test(stage, desktop),
        })


def it_ends_at_once_while_a_name_server_is_silent(stage):
    with SilentServer((NOBODY, 53), socket.SOCK_DGRAM) as server:
        namespace.name_hosts({})
        namespace.ask_name_server(NOBODY)
        end_from(stage, {"names being looked up": lambda stage: start_and_ask(stage, server)})
        namespace.ask_name_server(None)
        namespace.name_hosts(ADDRESSES)


def it_ends_at_once_while_a_proxy_configuration_server_is_silent(stage):
    with SilentServer((NOBODY, 80)) as server:
        configuration = {"https_proxy": f"pac+http://{NOBODY}:80/proxy.pac"}
        end_from(stage, {"a proxy being asked for": lambda stage: start_and_ask(stage, server, **configuration)})


def end_from(stage, starts):
    """Ends the program in every way from what each of these starts leaves it at."""
    ways = {
        "Quit": lambda program: stage.panel.click("Quit Vantelo"),
        "SIGTERM": lambda program: program.send(signal.SIGTERM),
        "SIGINT": lambda program: program.send(signal.SIGINT),
        "SIGTERM twice": lambda program: (program.send(signal.SIGTERM), program.send(signal.SIGTERM)),
    }
    for what, start in starts.items():
        for way, end in ways.items():
            stage.graph.answer = delivering(impressions=12345)
            stage.preferences.write(**CREDENTIALS)
            with start(stage) as program:
                end(program)
                seconds = program.expect_orderly_end(f"by {way} with {what}")
            expect_kept_preferences(stage)
            print(f"    {what}, {way}: {1000 * seconds:.0f} ms")


def a_signal_at_any_instant_of_the_start_ends_it_in_order(stage):
    """Before main() a signal still ends the process by itself; from then on the exit code is 0."""
    too_early = 0
    for milliseconds in range(0, 300, 10):
        program = stage.start()
        time.sleep(milliseconds / 1000)  # the instant is what is varied
        begun = program.catches(signal.SIGTERM)
        program.send(signal.SIGTERM)
        wait_until(lambda: program.ended, "the end of the program")
        if begun or program.exit_code != -signal.SIGTERM:
            expect(program.exit_code, 0, f"The exit code {milliseconds} ms after the start")
        else:
            too_early += 1
        expect_kept_preferences(stage)
    print(f"    {too_early} of 30 came before main()")
    expect(too_early < 30, True, "Whether any signal came after main() had begun")


def a_signal_in_the_first_moments_ends_it_in_order(stage):
    """While the application object is being made: just as it opens the plug-in for the screen."""
    with start_and_settle(stage) as program:
        plugin = program.library("/platforms/")
    for number in ("SIGTERM", "SIGINT"):
        inject = ["-e", "trace=openat", "-e", f"inject=openat:signal={number}:when=1", "-P", plugin]
        program = stage.start(under=["strace", "-f", "-o", "/dev/null", *inject])
        program.expect_orderly_end(f"by {number} while it opens {plugin}", within=10)


def a_plug_in_of_the_desktop_does_not_end_it(stage):
    """Qt would quit with the last lock on its event loop, and Plasma's plug-in has jobs that hold one."""
    plugins = {"QT_PLUGIN_PATH": os.environ["VANTELO_TEST_PLUGINS"], "QT_QPA_GENERIC_PLUGINS": "locking"}
    with start_and_settle(stage, **plugins) as program:
        wait_until(lambda: "the plug-in's job has ended" in program.output, "the plug-in's job")
        stage.graph.answer = delivering(impressions=12346)
        stage.panel.click("🔄 Refresh")
        stage.panel.wait_for_title("🟢 12,346")


def start_and_ask(stage, server, **environment):
    """The program asks this server, which is silent, and is there all the same."""
    heard = server.heard
    program = stage.start(**environment)
    stage.panel.wait_for_title("⚪ Setup")
    stage.panel.wait_for_rows(SETUP_ROWS)
    wait_until(lambda: server.heard > heard, "a question to the silent server")
    return program


def start_with_decode(stage):
    """A body as large as they may be, and small rows, so that decoding takes its time."""
    rows = b'{"impressions":"1"},' * (16 * 1024 * 1024 // 20 - 2)
    stage.graph.answer = lambda request: Reply(b'{"data":[' + rows + b"{}]}", compressed=False)
    program = stage.start()
    stage.wait_for_requests(1)  # before that, host names are looked up in a pool as well
    poll_until(program.is_decoding, "the decoding of a body")
    return program


def start_with_menu(stage):
    program = start_and_settle(stage)
    stage.panel.open_menu()
    return program


def start_with_own_menu(stage, desktop):
    program = start_and_settle(stage, **desktop.environment)
    stage.panel.ask_for_menu()
    desktop.wait_for_menu()
    return program


def start_with_windows(stage, desktop):
    program = start_with_settings(stage, desktop)
    desktop.press(Atspi.Role.PUSH_BUTTON, "Setup Guide")
    desktop.window("Setup Guide")
    return program


def start_with_connection_test(stage, desktop):
    program = start_with_settings(stage, desktop)
    stage.graph.answer = lambda request: SILENCE
    desktop.press(Atspi.Role.PUSH_BUTTON, "Test Connection")
    stage.wait_for_requests(4)
    return program


def start_with_settings(stage, desktop):
    program = start_and_settle(stage, **desktop.environment)
    stage.panel.click("Settings…")
    desktop.window("Vantelo Settings")
    return program


NOBODY = "127.0.0.97"  # an address of servers that never answer


def expect_kept_preferences(stage):
    stored = stage.preferences.read()
    expect({key: stored.get(key) for key in CREDENTIALS}, CREDENTIALS, "What is stored")


STEPS = [
    it_ends_at_once,
    it_ends_at_once_while_a_name_server_is_silent,
    it_ends_at_once_while_a_proxy_configuration_server_is_silent,
    a_signal_in_the_first_moments_ends_it_in_order,
    a_signal_at_any_instant_of_the_start_ends_it_in_order,
    a_plug_in_of_the_desktop_does_not_end_it,
]


sys.exit(run(STEPS))
