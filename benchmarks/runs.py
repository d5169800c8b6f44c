# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""Start, refresh, memory: every contender in turn, round after round. Prints one JSON object: lists by contender, and
what memory each took in the round before, as the first program of its toolkit on the screen.

    runs.py BUILD ROUNDS
"""

import sys
import time
from dataclasses import asdict
from statistics import median

import arena as places
import readings
from events import wait_until
from program import Program

WINDOWS = {"Open Settings…": "Vantelo Settings", "Setup Guide…": "Setup Guide"}  # row: title
POLLS = 5  # in one run of a program; the first of them are dearer than those of a long day


def main():
    build, rounds = sys.argv[1], int(sys.argv[2])
    arena = places.Arena()
    contenders = places.contenders(build)
    # The first round fills caches, of fonts and of icons for instance.
    first = {name: measure(arena, command) for name, command in contenders.items()}
    results = {name: [] for name in contenders}
    for _ in range(rounds):
        for name, command in contenders.items():
            results[name].append(measure(arena, command))
    results["first"] = {name: {what.replace("after refreshes", "on a new screen"): result[what] for what in result
                               if "memory after refreshes" in what} for name, result in first.items()}
    results["windows"] = [windows(arena, contenders["Vantelo"]) for _ in range(min(rounds, 3))]
    places.report(results)


def measure(arena, command):
    with Program(arena, command) as program:
        program.wait_for_item()
        item = time.monotonic() - program.started
        program.wait_for_figure()
        result = {"start to item": item, "start to figure": time.monotonic() - program.started,
                  "processor until figure": readings.processor_seconds(program.pid)}
        program.read_menu()
        program.settle()
        result.update(memory(program.pid, "after start"))
        polls = [poll(arena, program) for _ in range(POLLS)]
        result.update({what: median(poll[what] for poll in polls) for what in polls[0]})
        result.update(memory(program.pid, "after refreshes"))
        return result


def poll(arena, program):
    """One refresh; as ten minutes later, when the service has closed the connection."""
    arena.graph.hang_up()
    program.settle()
    arena.count_on()
    used, asked, began = readings.processor_seconds(program.pid), len(arena.journal), time.monotonic()
    program.refresh()
    program.wait_for_figure()
    took = time.monotonic() - began
    wait_until(lambda: len(arena.journal) >= asked + 2, "both requests")
    program.settle()
    return {"refresh to figure": took, "processor of refresh": readings.processor_seconds(program.pid) - used}


def windows(arena, command):
    """Memory around opening and closing both windows; without credentials the menu has rows for both."""
    with Program(arena, command) as program:
        program.wait_for_figure()
        arena.configure(token="")
        program.refresh()
        wait_until(lambda: "Setup" in program.text(), "the setup")
        program.settle()
        result = memory(program.pid, "before windows")
        open_and_close(arena.desk)
        program.settle()
        result.update(memory(program.pid, "after windows"))
        for _ in range(5):
            open_and_close(arena.desk)
        program.settle()
        result.update(memory(program.pid, "after more windows"))
        arena.configure()
        return result


def open_and_close(desk):
    for row, title in WINDOWS.items():
        desk.panel.click_row(row)
        desk.press(title, "Escape")


def memory(pid, when):
    return {f"{kind} memory {when}": size for kind, size in asdict(readings.memory(pid)).items()}


if __name__ == "__main__":
    main()
