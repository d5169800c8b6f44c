# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""Wake-ups of the contenders, all idle at once on one desk. Prints one JSON object: by contender, counts in a minute.

    idle.py BUILD SECONDS

The first minute counts from the end of a refresh on. The second begins 150 s after it, when connections and threads
that libraries keep for a while have gone, and is measured for so many seconds.
"""

import contextlib
import sys

import arena as places
import readings
from program import Program
from waiting import run_loop

FIRST, LATER = 60, 150  # seconds after the refresh


def main():
    build, seconds = sys.argv[1], int(sys.argv[2])
    arena = places.Arena()
    with contextlib.ExitStack() as stack:
        programs = {}
        for name, command in places.contenders(build).items():
            programs[name] = stack.enter_context(Program(arena, command))
            programs[name].wait_for_figure()
        for program in programs.values():
            program.settle()
        early = idle(programs, FIRST)
        run_loop(LATER - FIRST)
        late = idle(programs, seconds)
        places.report({name: {
            "wake-ups in the first minute": early[name].wake_ups,
            "wake-ups in a minute from 150 s on": late[name].wake_ups * 60 / seconds,
            "context switches in that minute": late[name].all * 60 / seconds,
        } for name in programs})


def idle(programs, seconds):
    before = {name: readings.switches(program.pid) for name, program in programs.items()}
    run_loop(seconds)
    return {name: readings.switches_between(before[name], readings.switches(program.pid))
            for name, program in programs.items()}


if __name__ == "__main__":
    main()
