#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""Vantelo beside the limit and beside what people use instead: all measurements, one table, the targets.

    compare.py BUILD [--quick]

BUILD has the programs "vantelo" and "limit". The quick way has fewer rounds and the idle programs beside it, so that
its times and its shared memory are rough. What decides the exit code needs no more: counts, and resident memory.
"""

import json
import subprocess
import sys
import tempfile
from pathlib import Path
from statistics import median

HERE = Path(__file__).resolve().parent
NOT_RUN = 77
COLUMNS = ["limit", "Vantelo", "Python", "shell"]
COUNTS = ["wake-ups", "context switches", "connections", "TLS handshakes", "round trips"]


def main():
    build, quick = sys.argv[1], "--quick" in sys.argv
    if quick:
        idle = begin("idle.py", build, 20)
    print(f"start, refresh and memory, {'two' if quick else 'ten'} rounds", flush=True)
    runs = finish(begin("runs.py", build, 2 if quick else 10))
    print("idling, the wire and instructions", flush=True)
    if not quick:
        idle = begin("idle.py", build, 60)  # later, since programs at work beside them would share their memory
    wire = finish(begin("wire.py", build))
    instructions = finish(begin("instructions.py", build, *(["Vantelo", "limit"] if quick else [])))
    windows = medians(runs.pop("windows"))
    first = runs.pop("first")
    figures = {name: {
        **medians(runs[name]),
        **first[name],
        **named("refresh to figure, round trips of 100 ms", wire[name], "refresh to figure"),
        **named("instructions of start", instructions.get(name, {}), "start"),
        **named("instructions of refresh", instructions.get(name, {}), "refresh"),
        **{what: wire[name][what] for what in wire[name] if what != "refresh to figure"},
    } for name in COLUMNS}
    for name, counts in finish(idle).items():
        figures[name].update(counts)
    print_table(figures)
    sizes = sizes_of(build)
    print_own(windows, sizes)
    return print_targets(figures, windows, sizes)


def begin(script, *arguments):
    output = tempfile.TemporaryFile("w+")
    return subprocess.Popen([sys.executable, HERE / script, *map(str, arguments)], stdout=output), output


def finish(started):
    """The result of a measurement."""
    process, output = started
    code = process.wait()
    output.seek(0)
    lines = output.read().splitlines() or [""]
    if code != 0:
        print("\n".join(lines))
        sys.exit(code)
    return json.loads(lines[-1])


def medians(rounds):
    return {what: median(each[what] for each in rounds) for what in rounds[0]}


def named(name, results, key):
    return {name: results[key]} if key in results else {}


def sizes_of(build):
    stripped = Path(tempfile.mkdtemp()) / "vantelo"
    subprocess.run(["strip", "-o", stripped, f"{build}/vantelo"], check=True)
    packages = sorted((Path(build).parent / "package").glob("*.deb"), key=lambda path: path.stat().st_mtime)
    return {"program": stripped.stat().st_size, **({"package": packages[-1].stat().st_size} if packages else {})}


def print_table(figures):
    """The limit's figures as they are, the others as multiples of it; counts always as they are."""
    print(f"\n{'':42}" + "".join(f"{name:>12}" for name in COLUMNS))
    for what in figures["limit"]:
        cells = [_cell(what, figures[name].get(what), figures["limit"][what], name == "limit") for name in COLUMNS]
        print(f"{what:42}" + "".join(f"{cell:>12}" for cell in cells))


def _cell(what, value, limit, absolute):
    if value is None:
        return "–"
    if what.startswith(tuple(COUNTS)):
        return f"{value:g}"
    if not absolute:
        return f"{value / limit:.2f} ×"
    if "memory" in what:
        return f"{value / 1024:.1f} MiB"
    if "instructions" in what:
        return f"{value / 1e6:.1f} M"
    return f"{value}" if "bytes" in what else f"{1000 * value:.1f} ms"


def print_own(windows, sizes):
    print("\nVantelo alone")
    for kind in ("resident", "private"):
        before, after, later = (windows[f"{kind} memory {when}"] / 1024
                                for when in ("before windows", "after windows", "after more windows"))
        print(f"{kind} memory with both windows closed again:"
              f" {after - before:+.1f} MiB; after five more times {later - after:+.2f} MiB more")
    for what, size in sizes.items():
        print(f"size of the {what}: {size / 1e6:.2f} MB")


def print_targets(figures, windows, sizes):
    """Says of each target whether it holds; 1 where one does not that has to hold on any machine."""
    vantelo, limit, python, shell = (figures[name] for name in ("Vantelo", "limit", "Python", "shell"))

    def ratio(what, below=limit):
        return vantelo[what] / below[what]
    regrowth = windows["private memory after more windows"] / windows["private memory after windows"]
    firm = [
        ("wake-ups in a minute from 150 s on", vantelo["wake-ups in a minute from 150 s on"], 0),
        ("connections of a refresh", vantelo["connections"], 1),
        ("TLS handshakes of a refresh", vantelo["TLS handshakes"], 1),
        ("round trips of a refresh, the handshake's included", vantelo["round trips"], 3),
        ("resident memory ÷ limit", ratio("resident memory after refreshes"), 1.15),
    ]
    noisy = [
        ("proportional memory ÷ limit", ratio("proportional memory after refreshes"), 1.15),
        ("start to figure ÷ limit", ratio("start to figure"), 1.1),
        ("processor until figure ÷ limit", ratio("processor until figure"), 1.1),
        ("processor of refresh ÷ limit", ratio("processor of refresh"), 1.3),
        ("processor of refresh ÷ shell", ratio("processor of refresh", shell), 1),
        ("proportional memory ÷ Python", ratio("proportional memory after refreshes", python), 1 / 3),
        ("the same on a new screen", ratio("proportional memory on a new screen", python), 1 / 3),
        ("resident memory ÷ Python, on a new screen", ratio("resident memory on a new screen", python), 1 / 3),
        ("private memory, windows closed again ÷ the first time", regrowth, 1.02),
        *([("package, in MB", sizes["package"] / 1e6, 1)] if "package" in sizes else []),
    ]
    print("\nTargets")
    for what, value, most in [*firm, *noisy]:
        print(f"{'holds ' if value <= most else 'MISSED'}  {what}: {value:.3g}, at most {most:.3g}")
    return int(any(value > most for _, value, most in firm))


if __name__ == "__main__":
    sys.exit(main())
