# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""What the kernel tells of a process and its children."""

import contextlib
import os
import time
from dataclasses import dataclass
from pathlib import Path

ENDED = (FileNotFoundError, ProcessLookupError)  # what reading says of a process or thread that is no more


@dataclass(frozen=True)
class Memory:
    """KiB. The first does not depend on what else runs, the others do: neighbours share libraries."""

    resident: int  # what it shares counts in full
    proportional: int  # what it shares counts in equal parts
    private: int  # shared with nobody


def memory(pid):
    resident = proportional = private = 0
    for process in family(pid):
        with contextlib.suppress(*ENDED):
            fields = _fields(Path(f"/proc/{process}/smaps_rollup"))
            resident += fields["Rss"]
            proportional += fields["Pss"]
            private += fields["Private_Clean"] + fields["Private_Dirty"]
    return Memory(resident, proportional, private)


@dataclass(frozen=True)
class Switches:
    """Context switches."""

    wake_ups: int  # a thread had slept, and no longer does
    all: int


def switches(pid):
    """The counts of each thread of the process and its children, since the thread began."""
    counts = {}
    for process in family(pid):
        for thread in threads(process):
            with contextlib.suppress(*ENDED):
                fields = _fields(Path(f"/proc/{process}/task/{thread}/status"))
                wake_ups = fields["voluntary_ctxt_switches"]
                counts[thread] = Switches(wake_ups, wake_ups + fields["nonvoluntary_ctxt_switches"])
    return counts


def threads(process):
    try:
        return os.listdir(f"/proc/{process}/task")
    except ENDED:
        return []


def switches_between(before, after):
    """What came in between. A thread that ended has woken up once at least."""
    none = Switches(0, 0)
    ended = len(before.keys() - after.keys())
    new = [(counts, before.get(thread, none)) for thread, counts in after.items()]
    return Switches(ended + sum(now.wake_ups - then.wake_ups for now, then in new),
                    ended + sum(now.all - then.all for now, then in new))


def processor_seconds(pid):
    """Of all its threads, ended ones too, to the nanosecond; and of ended children, to the clock tick."""
    own = time.clock_gettime(~pid << 3 | 2)  # as clock_getcpuclockid(3) makes it
    fields = Path(f"/proc/{pid}/stat").read_text().rpartition(")")[2].split()
    return own + sum(map(int, fields[13:15])) / os.sysconf("SC_CLK_TCK")


def family(pid):
    """The process and all its descendants."""
    try:
        children = Path(f"/proc/{pid}/task/{pid}/children").read_text().split()
    except ENDED:
        return []
    return [pid, *(member for child in children for member in family(int(child)))]


def _fields(path):
    """The figures of a file with lines as "Name:  123 kB"."""
    pairs = [line.split()[:2] for line in path.read_text().splitlines() if ":" in line]
    return {pair[0].rstrip(":"): int(pair[1]) for pair in pairs if len(pair) == 2 and pair[1].isdigit()}
