# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""Instructions of a start and of one refresh, as callgrind counts them: hardly a per cent of noise on the busiest of
machines, and nothing of the kernel's. Prints one JSON object: by contender, numbers.

    instructions.py BUILD [CONTENDER ...]

Children count from their start to their end; so the shell's have their own dynamic linking in every refresh.
"""

import re
import subprocess
import sys

import arena as places
import namespace
from events import wait_until
from program import Program


def main():
    build = sys.argv[1]
    arena = places.Arena()
    folder = namespace.private_folder("counts")
    arena.desk.environment["TMPDIR"] = str(arena.desk.home)  # where the counter's own pipes go
    contenders = places.contenders(build)
    places.report({name: measure(arena, contenders[name], folder) for name in sys.argv[2:] or contenders})


def measure(arena, command, folder):
    for old in folder.iterdir():
        old.unlink()
    counting = ["valgrind", "--tool=callgrind", "--trace-children=yes", f"--callgrind-out-file={folder}/%p", "--quiet"]
    with Program(arena, [*counting, *command]) as program:
        program.wait_for_figure()
        program.read_menu()
        program.settle(1.0)
        start = take(program.pid, arena, folder)
        arena.graph.hang_up()
        program.settle(1.0)
        take(program.pid, arena, folder)
        asked = len(arena.journal)
        arena.count_on()
        program.refresh()
        program.wait_for_figure()
        wait_until(lambda: len(arena.journal) >= asked + 2, "both requests", 60)
        program.settle(1.0)
        return {"start": start, "refresh": take(program.pid, arena, folder)}


def take(pid, arena, folder):
    """Instructions since the last time, of the process and of children that have ended meanwhile."""
    for command in ("--dump", "--zero"):
        subprocess.run(["callgrind_control", command, str(pid)], env=arena.desk.environment, check=True,
                       capture_output=True)
    total = 0
    for counts in folder.iterdir():
        total += sum(map(int, re.findall(r"^totals: (\d+)", counts.read_text(errors="replace"), re.MULTILINE)))
        if counts.suffix or counts.name != str(pid):  # the process itself still writes to its first
            counts.unlink()
    return total


if __name__ == "__main__":
    main()
