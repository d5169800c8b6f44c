# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""Runs the year, or a part of it, in a private corner of the machine, and tells what came of it.

    python3 tests/hostile/year/run.py build/debug/tests/WatchedProgram --polls 52560 --seed 1
"""

import argparse
import collections
import re
import sys
import time
from pathlib import Path

sys.path.append(str(Path(__file__).resolve().parents[2] / "endtoend"))

import namespace
import replies
from mishaps import MISHAPS
from preferences import mount_small_disk
from program import Ended, Hanging
from service import Unasked, refused_connections
from sleeps import SLEEPS
from watch import Divergence
from year import BETWEEN_POLLS, DEATHS, LEFT_OVER, SECRET, Year

OF_THE_PLATFORM = "This plugin does not support propagateSizeHints()"  # Qt's offscreen one, at every alert
OCCASIONS = ["refresh", "test", "tick and refresh at once", "tick with an edit amid",
             "tick cut off by a sleep", BETWEEN_POLLS]
SHORT = 800  # polls, enough for everything to happen once
MEMORY_ALLOWANCE = 1_000_000  # bytes


def main():
    arguments = parse_arguments()
    namespace.enter()
    namespace.set_network(up=True)
    disk = namespace.private_folder("disk")
    mount_small_disk(disk)
    year = Year(arguments.program, disk, arguments.seed, arguments.polls)
    started = time.monotonic()
    print(f"seed {arguments.seed}, {arguments.polls} polls", flush=True)
    try:
        year.run()
    except (Divergence, Ended, Hanging, Unasked) as failure:
        print(f"DIVERGED at poll {year.poll} of {arguments.polls}, seed {arguments.seed}\n{year.circumstances()}\n"
              f"{hidden(f'{type(failure).__name__}: {failure}')}\nrepeat with: python3 {sys.argv[0]} "
              f"{arguments.program} --polls {arguments.polls} --seed {arguments.seed}")
        sys.exit(1)
    print_tally(year, time.monotonic() - started)
    problems = [*verdict(year, arguments.polls)]
    print("\n".join(problems) or "no divergence")
    sys.exit(bool(problems))


def parse_arguments():
    parser = argparse.ArgumentParser(description="A year of polls against an independent model.")
    parser.add_argument("program", help="the watched program of a test build")
    parser.add_argument("--polls", type=int, default=SHORT)
    parser.add_argument("--seed", type=int, default=1)
    return parser.parse_args([argument for argument in sys.argv[1:] if argument != namespace.INSIDE])


def print_tally(year, seconds):
    print(f"{year.watch.commands} steps compared in {seconds:.0f} s, {year.program.lives} lives, "
          f"{year.service.repeated} requests repeated")
    print(f"{refused_connections()} connections refused")
    for name, count in sorted(year.happened.items()):
        print(f"  {count:6} {name}")
    kinds = collections.Counter()
    for (preset, kind), count in year.service.given.items():
        kinds[kind, preset] += count
    for kind in dict.fromkeys(["clean", *replies.INSIGHTS_KINDS, *replies.FEED_KINDS]):
        counts = "".join(f"{kinds[kind, preset]:7}" for preset in ("today", "last_7d", "feed"))
        print(f"{counts} {kind}")
    start, end = start_and_end(year.memory)
    print(f"private memory of the last life, {len(year.memory)} polls: "
          f"{start:,} bytes at its start, {end:,} at its end, {end - start:+,}")


def start_and_end(memory):
    """The lowest of the first and of the last eighth: what a large reply took and gave back is no growth."""
    eighth = max(1, len(memory) // 8)
    return min(memory[:eighth]), min(memory[-eighth:])


def verdict(year, polls):
    """What is wrong with a run in which nothing diverged."""
    if year.watch.planned != year.service.given:
        yield f"planned and given differ: {dict(year.watch.planned - year.service.given)}, " \
              f"{dict(year.service.given - year.watch.planned)}"
    refused = sum(count for (_, kind), count in year.service.given.items() if kind == "refused")
    if refused_connections() < refused:
        yield f"{refused} fetches to be refused, but {refused_connections()} connections refused"
    if polls >= SHORT:
        yield from missed(year)
    start, end = start_and_end(year.memory)
    if end - start >= MEMORY_ALLOWANCE and not year.sanitized:
        yield "memory has grown"
    year.program.errors.seek(0)
    written = year.program.errors.read()
    if SECRET.encode() in written or year.program.leaked:
        yield "the program has written an access token"
    for line, count in collections.Counter(written.decode(errors="replace").splitlines()).items():
        if line != OF_THE_PLATFORM:
            yield f"{count} × on standard error: {hidden(line)}"


def missed(year):
    """What has never happened."""
    for preset, kinds in [("today", replies.INSIGHTS_KINDS), ("last_7d", replies.INSIGHTS_KINDS),
                          ("feed", replies.FEED_KINDS)]:
        for kind in kinds:
            if not year.service.given[preset, kind]:
                yield f"never happened: {kind} ({preset})"
    for name in [*MISHAPS, *SLEEPS, *(f"killed {death}" for death in DEATHS), *LEFT_OVER, *OCCASIONS]:
        if not year.happened[name]:
            yield f"never happened: {name}"


def hidden(text):
    return re.sub(rf"{SECRET}\w*", "<token>", text)


main()
