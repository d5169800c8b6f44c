# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""The program under test as a process, and its preference file as another program sees it."""

import configparser
import stat
import subprocess
import threading
import time
from pathlib import Path

from events import Failure, Recording, expect, something_happened, wait_until


class VanteloProcess:
    """One run of the program. Leaving the `with` block ends it by SIGTERM, unless it has ended before."""

    runs = []  # every run so far, so that what all of them wrote can be searched

    def __init__(self, binary, environment, under=()):
        """With `under`, the program runs under another one, whose command line this is."""
        self.runs.append(self)
        self.started = time.monotonic()
        if under:  # where the leak sanitizer, if it is built in, would refuse to work
            environment = {**environment, "ASAN_OPTIONS": "detect_leaks=0"}
        self._process = subprocess.Popen([*under, binary], env=environment, stdin=subprocess.DEVNULL,
                                         stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        self._output = Recording(self._process.stdout)
        threading.Thread(target=self._wait, daemon=True).start()

    def __enter__(self):
        return self

    def __exit__(self, exception_type, *_):
        if exception_type:
            self._process.kill()
            return
        if not self.ended:
            self._process.terminate()
            self.expect_orderly_end("after SIGTERM")

    @property
    def ended(self):
        return self._process.poll() is not None

    @property
    def exit_code(self):
        return self._process.returncode

    @property
    def pid(self):
        return self._process.pid

    def child(self):
        """The program itself, where it runs under another one."""
        with open(f"/proc/{self.pid}/task/{self.pid}/children", encoding="ascii") as file:
            return int(file.read().split()[0])

    @property
    def output(self):
        """What it has written to standard output and standard error."""
        return self._output.bytes.decode()

    def private_memory(self):
        """Bytes that it has written: what it only reads of files is shared or not as neighbours come and go."""
        with open(f"/proc/{self.pid}/smaps_rollup", encoding="ascii") as file:
            return 1024 * sum(int(line.split()[1]) for line in file if line.startswith("Private_Dirty:"))

    def wake_ups(self):
        """How often one of its threads has waited and gone on, so far."""
        threads = [task.name for task in Path(f"/proc/{self.pid}/task").iterdir()]
        return sum(int(self._status("voluntary_ctxt_switches", thread)) for thread in threads)

    def catches(self, signal_number):
        return bool(int(self._status("SigCgt"), 16) >> (signal_number - 1) & 1)

    def library(self, part):
        """The path of the library or plug-in with this in its name."""
        with open(f"/proc/{self.pid}/maps", encoding="utf-8") as file:
            return next(line.split()[-1] for line in file if part in line)

    def is_decoding(self):
        """Whether a thread of a pool is at work: while nothing is looked up, the one that decodes bodies."""
        return any(self._is_at_work(task.name) for task in Path(f"/proc/{self.pid}/task").iterdir())

    def _is_at_work(self, thread):
        try:
            return self._status("Name", thread) == "Thread" and self._status("State", thread) == "R"
        except (FileNotFoundError, ProcessLookupError):  # it has just ended
            return False

    def _status(self, key, thread=None):
        path = f"/proc/{self.pid}/task/{thread or self.pid}/status"
        with open(path, encoding="utf-8") as file:
            return next(line.split()[1] for line in file if line.startswith(key + ":"))

    def is_sanitized(self):
        with open(f"/proc/{self.pid}/maps", encoding="utf-8") as file:
            return "libasan" in file.read()

    def command_line(self):
        with open(f"/proc/{self.pid}/cmdline", "rb") as file:
            return file.read()

    def send(self, signal_number):
        self._process.send_signal(signal_number)

    def expect_orderly_end(self, when, within=1.0):
        """Waits for the end with exit code 0; the seconds it took."""
        asked = time.monotonic()
        wait_until(lambda: self.ended, f"the end of the program {when}")
        seconds = time.monotonic() - asked
        expect(self._process.returncode, 0, f"The exit code {when}")
        if seconds >= within:
            raise Failure(f"The program took {seconds:.2f} s to end {when}.")
        return seconds

    def _wait(self):
        self._process.wait()
        something_happened()


class PreferenceFile:
    """Vantelo.conf, read and written without the program's help."""

    def __init__(self, configuration_folder):
        self.path = configuration_folder / "Vantelo" / "Vantelo.conf"

    def write(self, mode=0o600, **values):
        self.path.parent.mkdir(mode=0o700, exist_ok=True)
        file = self._parser()
        file["General"] = {key: str(value) for key, value in values.items()}
        with self.path.open("w") as output:
            file.write(output, space_around_delimiters=False)
        self.path.chmod(mode)

    def remove(self):
        self.path.unlink(missing_ok=True)
        self.path.parent.rmdir()

    def read(self):
        file = self._parser()
        file.read(self.path)
        return dict(file["General"])

    def holds(self, values):
        return self.path.is_file() and values.items() <= self.read().items()

    def mode(self):
        return stat.S_IMODE(self.path.stat().st_mode)

    @staticmethod
    def _parser():
        parser = configparser.RawConfigParser()
        parser.optionxform = str  # keys keep their case
        return parser
