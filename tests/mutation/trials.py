# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""A changed source: compiled, linked and tested without touching the tree."""

import functools
import json
import os
import shlex
import shutil
import signal
import subprocess
import sys
import threading
import time
from pathlib import Path
from typing import NamedTuple

from guards import COMPANIONS, GUARDS

NOT_RUN = 77


def give_up(why):
    """From whichever thread."""
    print(why, file=sys.stderr, flush=True)
    os._exit(2)


class Test(NamedTuple):
    """A test as ctest runs it."""
    words: list
    environment: dict
    outputs: list  # of the build: the program that is tried, and what it is tried with


class Build:
    """build/mutation: nothing optimised, each library's system headers precompiled."""

    def __init__(self, root):
        self.root = root
        self.folder = root / "build" / "mutation"
        self.tests = {}
        self.limits = {}
        self.lock = threading.Lock()

    def make(self, names):
        linker = ["-DCMAKE_EXE_LINKER_FLAGS=-fuse-ld=lld"] if shutil.which("ld.lld") else []
        subprocess.run(["cmake", "-S", self.root, "-B", self.folder, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Debug",
                        "-DCMAKE_CXX_FLAGS_DEBUG=-O0 -w", *linker,
                        f"-DVANTELO_RELEASE_PROGRAM={self.folder / 'vantelo'}",
                        f"-DCMAKE_PROJECT_INCLUDE={self.root}/tests/mutation/precompile.cmake"],
                       check=True, stdout=subprocess.DEVNULL)
        # ctest names the command of a program only once it has been built.
        known = self._known_tests()
        targets = {output for name in names for output in (known[name].outputs or [name.split("/")[-1]])}
        subprocess.run(["ninja", "-C", self.folder, "-j2", *sorted(targets)], check=True, stdout=subprocess.DEVNULL)
        known = self._known_tests()
        self.tests = {name: known[name] for name in names}

    def _known_tests(self):
        listed = subprocess.run(["ctest", "--test-dir", self.folder, "--show-only=json-v1"],
                                check=True, capture_output=True, text=True)
        tests = {}
        for entry in json.loads(listed.stdout)["tests"]:
            properties = {each["name"]: each["value"] for each in entry["properties"]}
            words = entry.get("command", [])
            test = Test(words, dict(each.split("=", 1) for each in properties.get("ENVIRONMENT", []) if each),
                        [str(Path(word).relative_to(self.folder)) for word in words if self._is_output(word)])
            tests[entry["name"]] = tests[entry["name"].split("/")[-1]] = test
        return tests

    def _is_output(self, word):
        return Path(word).is_relative_to(self.folder) and not Path(word).is_dir()

    @functools.cache
    def command(self, target):
        """What makes a file of the build, as a list of words."""
        lines = subprocess.run(["ninja", "-C", self.folder, "-t", "commands", "-s", target],
                               check=True, capture_output=True, text=True)
        return [word for word in shlex.split(lines.stdout.splitlines()[-1]) if word not in (":", "&&")]

    @functools.cache
    def object_of(self, name):
        """What the build makes of a source: objects lie with the library, whose folder may have others below it."""
        src, library, *rest = Path(name).parts
        found = (self.folder / src / library).glob(f"CMakeFiles/*.dir/{'/'.join(rest)}.o")
        return str(next(found).relative_to(self.folder))

    def link(self, program, output, name, changed):
        """What links a program with the changed object in place of a source's own, as a list of words."""
        original = self.object_of(name)
        library = f"lib{Path(original.split('.dir/')[0]).name}.a"
        words = output_to(output, self.command(program))
        if original in words:
            words[words.index(original)] = changed
        elif any(Path(word).name == library for word in words):
            # In front of the libraries, so that nobody looks for the original in them.
            words.insert(next(index for index, word in enumerate(words) if str(word).endswith(".a")), changed)
        else:
            give_up(f"{program} has nothing of {name}.")
        return words

    def succeeds(self, words):
        return subprocess.run(words, cwd=self.folder, capture_output=True).returncode == 0

    @functools.cache
    def expect_linkable(self, name, program):
        """A program with a double of its own in place of the source can never be linked, and guards nothing."""
        if not self.succeeds(self.link(program, self.folder / "unchanged", name, self.object_of(name))):
            give_up(f"{program} cannot be linked with {name} even unchanged.")

    def limit(self, name, but_not=None):
        """Generous seconds; measured once more where a limit has turned out to be for a machine that was less busy. What
        fails unchanged would notice every change."""
        with self.lock:
            if self.limits.get(name) == but_not:
                began = time.monotonic()
                if all(run(self.tests[name], {}, 1800) != 0 for _ in range(2)):
                    give_up(f"{name} fails without any change.")
                self.limits[name] = max(20 + 5 * (time.monotonic() - began), but_not or 0)
        return self.limits[name]


class Trial:
    """One changed source, in a folder of its thread's own."""

    def __init__(self, build, name, source):
        self.build, self.name, self.source = build, name, source
        self.folder = build.folder / "trials" / threading.current_thread().name
        self.folder.mkdir(parents=True, exist_ok=True)
        self.object = self.folder / "changed.o"

    def outcome(self):
        if not self._compiles():
            return "did not compile"
        for name in GUARDS[self.name]:
            test = self.build.tests[name]
            program = test.outputs[0]
            for each in [program, *COMPANIONS.get(name, [])]:
                if not self._links(each):
                    self.build.expect_linkable(self.name, each)
                    return "did not compile"
            # On a busy machine what tries the whole program is too slow now and then.
            if all(self._fails(name) for _ in range(2 if "/" in name else 1)):
                return f"noticed by {name}"
        return "survived"

    def _fails(self, name):
        test = self.build.tests[name]
        changed = {str(self.build.folder / test.outputs[0]): str(self.folder / Path(test.outputs[0]).name)}
        limit = self.build.limit(name)
        code = run(test, changed, limit)
        while code is None and (longer := self.build.limit(name, but_not=limit)) > 1.5 * limit:
            limit = longer
            code = run(test, changed, limit)
        return code not in (0, NOT_RUN)

    def _compiles(self):
        source = self.folder / "changed.cpp"
        source.write_text(self.source)
        words = output_to(self.object, self.build.command(self.build.object_of(self.name)))
        words[words.index("-c") + 1] = source
        words[words.index("-MF") + 1] = self.folder / "changed.d"
        return self.build.succeeds(words)

    def _links(self, program):
        words = self.build.link(program, self.folder / Path(program).name, self.name, self.object)
        return self.build.succeeds(words)


def output_to(path, words):
    return [path if previous == "-o" else word for previous, word in zip([None, *words], words)]


def run(test, changed, limit):
    """The exit code of a test, with these words for others; none where its time was up. It ends with its first failure,
    and takes along what it began."""
    words = [changed.get(word, word) for word in test.words]
    with subprocess.Popen(words, env={**os.environ, "QTEST_DISABLE_STACK_DUMP": "1", **test.environment},
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT, start_new_session=True) as process:
        reader = threading.Thread(target=_end_at_failure, args=(process,), daemon=True)
        reader.start()
        in_time = True
        try:
            process.wait(limit)
        except subprocess.TimeoutExpired:
            in_time = False
        _kill(process)
        reader.join()
    return process.returncode if in_time else None


def _end_at_failure(process):
    for line in process.stdout:
        if line.startswith(b"FAIL!"):
            _kill(process)


def _kill(process):
    try:
        os.killpg(process.pid, signal.SIGKILL)
    except ProcessLookupError:
        pass
