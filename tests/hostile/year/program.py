# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""The watched program: one process after another, each a life of the same program."""

import json
import os
import selectors
import subprocess
import tempfile
import time

# As any user: without the privileges for which no file is unreadable.
_WITHOUT_PRIVILEGES = ["setpriv", "--inh-caps=-all", "--bounding-set=-all", "--no-new-privs"]
# What the program frees goes back to the system at once, so that memory that stays taken is the program's own.
_ALLOCATOR = {"MALLOC_ARENA_MAX": "1", "MALLOC_MMAP_THRESHOLD_": "65536", "MALLOC_TRIM_THRESHOLD_": "65536"}
_PATIENCE = 30.0  # seconds until a step counts as hanging


class Hanging(Exception):
    pass


class Ended(Exception):
    """The program went by itself."""


class Program:
    def __init__(self, binary, home, selector, secret):
        self._binary = binary
        self._selector = selector
        self._secret = secret  # must not be in anything that the program writes
        self._home = home
        self._process = None
        self.errors = tempfile.TemporaryFile()
        self.lives = 0
        self.leaked = False
        self._unread = b""
        self._lines = []
        self._is_to_die = False

    def start(self, origin):
        environment = {"HOME": str(self._home), "XDG_CONFIG_HOME": str(self._home / "config"), "PATH": "/usr/bin:/bin",
                       "XDG_RUNTIME_DIR": str(self._home), "QT_QPA_PLATFORM": "offscreen", **_ALLOCATOR,
                       **{name: os.environ[name] for name in ("LC_ALL", "LOCPATH") if name in os.environ}}
        self._process = subprocess.Popen([*_WITHOUT_PRIVILEGES, self._binary, origin], env=environment, bufsize=0,
                                         stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=self.errors)
        os.set_blocking(self._process.stdout.fileno(), False)
        self._selector.register(self._process.stdout, selectors.EVENT_READ, self._read)
        self.lives += 1
        self._unread = b""
        self._lines = []
        self._is_to_die = False

    def kill(self):
        """SIGKILL, at once; what it has written by then stays unread."""
        self._process.kill()
        if self._process.stdout in self._selector.get_map():
            self._selector.unregister(self._process.stdout)
        self._process.wait()
        self._process.stdin.close()
        self._process.stdout.close()
        self._process = None

    def order(self, what, at, **more):
        self._process.stdin.write(json.dumps({"do": what, "at": at, **more}).encode() + b"\n")

    def next_report(self):
        """Lets things happen until the program reports; its report and the lines it has logged before."""
        log = []
        while True:
            self.wait_until(lambda: self._lines, "a report")
            line = self._lines.pop(0)
            if line.startswith("{"):
                return json.loads(line), log
            log.append(line)

    def wait_for_death(self):
        """Of a program that was told to die."""
        self._is_to_die = True
        self.wait_until(lambda: self._lines, "its death")

    def private_memory(self):
        """Bytes that it has written and shares with no other process."""
        with open(f"/proc/{self._process.pid}/smaps_rollup", encoding="ascii") as file:
            return 1024 * next(int(line.split()[1]) for line in file if line.startswith("Private_Dirty:"))

    def is_sanitized(self):
        with open(f"/proc/{self._process.pid}/maps", encoding="utf-8") as file:
            return "libasan" in file.read()

    def wait_until(self, condition, what):
        deadline = time.monotonic() + _PATIENCE
        while not condition():
            if time.monotonic() >= deadline:
                raise Hanging(f"waited {_PATIENCE:g} s in vain for {what}")
            self._let_happen(1.0)

    def _let_happen(self, seconds):
        for key, _ in self._selector.select(seconds):
            if key.fileobj.fileno() >= 0:  # not closed by an earlier one of the same batch
                key.data(key.fileobj)

    def _read(self, pipe):
        received = pipe.read()
        if received == b"" and self._is_to_die:
            self._lines.append("dead")
            self._selector.unregister(pipe)
        elif received == b"":
            raise Ended(f"the program ended by itself with code {self._process.wait()}")
        self.leaked = self.leaked or self._secret in received
        *lines, self._unread = (self._unread + (received or b"")).split(b"\n")
        self._lines += [line.decode() for line in lines]
