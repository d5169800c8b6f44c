# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""The kernel's timer of the program's polls, looked at and moved from outside, and a machine that seems to sleep."""

import ctypes
import os
import re
import struct
from dataclasses import dataclass
from pathlib import Path

import namespace
from events import Failure, expect

CLOCK_BOOTTIME, CLOCK_BOOTTIME_ALARM = 7, 9  # go on while the machine sleeps; the latter wakes it
_PIDFD_GETFD = 438  # the system call's number
_ABSOLUTE = 1
_libc = ctypes.CDLL(None, use_errno=True)


@dataclass
class PollTimer:
    """A timer descriptor of a process, as its kernel describes it."""

    pid: int
    descriptor: int
    clock: int
    seconds_left: float
    repeats: bool

    @classmethod
    def of(cls, pid):
        """The only one on the clock that goes on asleep."""
        timers = [timer for timer in _timers(pid) if timer.clock in (CLOCK_BOOTTIME, CLOCK_BOOTTIME_ALARM)]
        expect([timer.clock for timer in timers], [CLOCK_BOOTTIME], "Timers on clocks that go on while the machine sleeps")
        return timers[0]

    def expire(self):
        """Its time has passed."""
        theirs = os.pidfd_open(self.pid)
        ours = _libc.syscall(_PIDFD_GETFD, theirs, self.descriptor, 0)
        long_ago = struct.pack("qqqq", 0, 0, 0, 1)
        if ours < 0 or _libc.timerfd_settime(ours, _ABSOLUTE, long_ago, None) != 0:
            raise Failure(f"The timer cannot be moved: {os.strerror(ctypes.get_errno())}")
        os.close(ours)
        os.close(theirs)


def _timers(pid):
    for path in Path(f"/proc/{pid}/fdinfo").iterdir():
        if match := re.search(r"^clockid: (\d+)\n(?:.*\n)*it_value: \((\d+), (\d+)\)\nit_interval: \((\d+), (\d+)\)",
                              path.read_text(), re.MULTILINE):
            clock, seconds, nanoseconds, *interval = map(int, match.groups())
            yield PollTimer(pid, int(path.name), clock, seconds + nanoseconds / 1e9, any(interval))


class Sleeper:
    """Makes a program believe that the machine sleeps. Its clock is moved within it, and its timer from outside."""

    def __init__(self, library):
        self._time = namespace.private_folder("asleep") / "seconds"
        self._write(0)
        self.environment = {"LD_PRELOAD": library, "ASLEEP": str(self._time)}

    def sleep(self, program, seconds):
        """Falls asleep and wakes; the timer goes off if its time has passed."""
        timer = PollTimer.of(program.pid)
        self._write(self._seconds + seconds)
        if timer.seconds_left <= seconds:
            timer.expire()

    def _write(self, seconds):
        self._seconds = seconds
        mode = "r+b" if self._time.exists() else "wb"
        with self._time.open(mode) as file:  # in place, because the program looks into this very file
            file.write(struct.pack("q", seconds))
