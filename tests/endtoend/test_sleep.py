#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""The machine sleeps, wakes and finds itself in another network.

    test_sleep.py path/to/vantelo path/to/the/library/of/Asleep.cpp

No machine is put to sleep here. What the kernel does then is taken from its manual: the clock that goes on asleep has
moved, and a timer on it whose time has passed goes off.
"""

import signal
import socket
import subprocess
import sys
from pathlib import Path

sys.dont_write_bytecode = True  # the source tree stays clean
sys.path.append(str(Path(__file__).resolve().parents[1] / "support"))

import network_manager
from events import Failure, expect, poll_until, wait_until
from figures import delivering
from machine_sleep import PollTimer, Sleeper
from network_manager import NetworkManager
from scenario import START, TODAY, WEEK, run, start_and_settle
from stage import GRAPH

LIBRARY = sys.argv[2]
NIGHT = 9 * 3600
INTERVAL = 600
SOON = 5.0  # seconds; a dead connection is given up after sixty


def the_poll_timer_counts_the_time_asleep(stage):
    with start_and_settle(stage) as program:
        expect_whole_interval(program.pid)


def a_machine_that_has_slept_before_makes_no_difference(stage):
    """Its clock that goes on asleep is ten days ahead of the other, which a mistake of one for the other would show."""
    shifted = ["unshare", "--time", "--boottime", str(10 * 86_400), "--fork", "--kill-child"]
    with start_and_settle(stage, under=shifted) as program:
        expect_whole_interval(program.child())
        PollTimer.of(program.child()).expire()
        stage.wait_for_requests(5)
        subprocess.run(["kill", str(program.child())], check=True)
        wait_until(lambda: program.ended, "the end")
    expect(stage.targets(), [*START, TODAY, WEEK], "Requests")


def a_timer_that_passed_while_the_program_stood_still_brings_one_poll(stage):
    with start_and_settle(stage) as program:
        program.send(signal.SIGSTOP)
        PollTimer.of(program.pid).expire()
        stage.graph.answer = delivering(impressions=12346)
        program.send(signal.SIGCONT)
        stage.panel.wait_for_title("🟢 12,346")
        stage.wait_for_requests(5)
    expect(stage.targets(), [*START, TODAY, WEEK], "Requests")


def after_a_night_the_figures_are_new(stage):
    sleeper = Sleeper(LIBRARY)
    with start_and_settle(stage, **sleeper.environment) as program:
        wake_into_new_figures(stage, sleeper, program)
        expect_whole_interval(program.pid)
    expect(stage.targets(), [*START, TODAY, WEEK], "Requests")


def the_first_poll_waits_for_the_network(stage):
    sleeper = Sleeper(LIBRARY)
    with NetworkManager() as manager:
        with start_and_settle(stage, **sleeper.environment, **manager.environment) as program:
            expect(manager.visitors(), 0, "Programs on the system bus before a sleep")
            manager.state = network_manager.ASLEEP
            asked = manager.questions  # newer releases of libproxy ask by themselves at the start
            lose_connections(stage)
            sleeper.sleep(program, NIGHT)
            wait_until(lambda: manager.questions > asked, "the question for the network")
            for state in (network_manager.DISCONNECTED, network_manager.CONNECTING, network_manager.LOCAL,
                          network_manager.SITE):
                manager.become(state)
            manager.wait_until_heard()
            for _ in range(3):
                stage.panel.rows()  # answered once the program has acted on what it heard
            expect(len(stage.journal), len(START), "Requests before the machine is online")
            stage.graph.answer = delivering(impressions=12346)
            manager.become(network_manager.ONLINE)
            stage.panel.wait_for_title("🟢 12,346")
            stage.wait_for_requests(5)
            poll_until(lambda: manager.visitors() == 0, "the program to leave the system bus")
            expect_whole_interval(program.pid)
    expect(stage.targets(), [*START, TODAY, WEEK], "Requests")


def without_a_word_on_the_network_the_poll_goes_out_at_once(stage):
    sleeper = Sleeper(LIBRARY)
    with NetworkManager() as manager:
        with start_and_settle(stage, **sleeper.environment, **manager.environment) as program:
            manager.state = network_manager.UNKNOWN
            wake_into_new_figures(stage, sleeper, program)
            manager.state = network_manager.ONLINE
            wake_into_new_figures(stage, sleeper, program, impressions=12347)
            manager.disappear()
            wake_into_new_figures(stage, sleeper, program, impressions=12348)


def another_network_makes_another_connection(stage):
    for change in (["address", "192.0.2.7/24"], ["route", "198.51.100.0/24"]):
        make_another_connection(stage, change)


def make_another_connection(stage, change):
    what, place = change
    stage.graph.answer = delivering(impressions=12345)
    with start_and_settle(stage):
        connections, asked = stage.connections(), len(stage.journal)
        lose_connections(stage)
        _ip(what, "add", place, "dev", "lo")
        try:
            stage.graph.answer = delivering(impressions=12346)
            stage.panel.click("🔄 Refresh")
            wait_until(lambda: len(stage.journal) >= asked + 2, f"the figures after another {what}", SOON)
            stage.panel.wait_for_title("🟢 12,346")
        finally:
            _ip(what, "delete", place, "dev", "lo")
    expect(stage.connections(since=connections), {GRAPH: (1, 1)}, "New connections, TLS handshakes")


def wake_into_new_figures(stage, sleeper, program, impressions=12346):
    """Every connection has died in the night, unnoticed."""
    connections, asked = stage.connections(), len(stage.journal)
    lose_connections(stage)
    stage.graph.answer = delivering(impressions)
    sleeper.sleep(program, NIGHT)
    wait_until(lambda: len(stage.journal) >= asked + 2, "the figures after the night", SOON)
    stage.panel.wait_for_title(f"🟢 {impressions:,}")
    expect(stage.connections(since=connections), {GRAPH: (1, 1)}, "New connections, TLS handshakes")


def lose_connections(stage):
    """What is sent over the connections that the program has now goes nowhere, and nobody is told."""
    while subprocess.run(["ip", "rule", "delete", "pref", "1"], capture_output=True).returncode == 0:
        pass  # the service never learns that a connection was lost, and so tells of the earlier ones again
    for port in stage.graph.client_ports():
        for way in (["sport", str(port), "dport", "443"], ["sport", "443", "dport", str(port)]):
            _ip("rule", "add", "pref", "1", "ipproto", str(socket.IPPROTO_TCP), *way, "blackhole")


def let_rules_precede_local_addresses(stage):
    """The kernel looks up its own addresses before all else; from now on after the rules that lose connections."""
    _ip("rule", "add", "pref", "100", "lookup", "local")
    _ip("rule", "delete", "pref", "0")


def expect_whole_interval(pid):
    timer = PollTimer.of(pid)
    if not INTERVAL - SOON < timer.seconds_left <= INTERVAL:
        raise Failure(f"The next poll is {timer.seconds_left} s away.")
    expect(timer.repeats, False, "Whether the kernel repeats the timer by itself")


def _ip(*arguments):
    subprocess.run(["ip", *arguments], check=True)


STEPS = [
    let_rules_precede_local_addresses,
    the_poll_timer_counts_the_time_asleep,
    a_machine_that_has_slept_before_makes_no_difference,
    a_timer_that_passed_while_the_program_stood_still_brings_one_poll,
    after_a_night_the_figures_are_new,
    the_first_poll_waits_for_the_network,
    without_a_word_on_the_network_the_poll_goes_out_at_once,
    another_network_makes_another_connection,
]


sys.exit(run(STEPS))
