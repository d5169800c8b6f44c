# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT

"""Processes that end with the one that started them, come what may."""

import ctypes
import os
import signal
import subprocess
import sys
import time

PR_SET_PDEATHSIG = 1
PR_SET_CHILD_SUBREAPER = 36
_libc = ctypes.CDLL(None, use_errno=True)


class Failure(Exception):
    """Something did not work out; the text is a sentence for the user."""


class NotYet(Failure):
    """Nobody answered as they should; while something is waited for, that is no reason to give up."""


def wait_until(condition, seconds, failure):
    """Gives the condition's first true result; raises a Failure when none comes in time."""
    deadline = time.monotonic() + seconds
    while True:
        try:
            if result := condition():
                return result
        except NotYet as reason:
            failure = f'{failure} ({reason})' if time.monotonic() > deadline else failure
        if time.monotonic() > deadline:
            raise Failure(failure)
        time.sleep(0.1)


def _ask_linux(option, argument):
    """Other systems know nothing of the kind; there an orderly end has to do."""
    if sys.platform == 'linux':
        _libc.prctl(option, argument)


def _end_with_parent():
    _ask_linux(PR_SET_PDEATHSIG, signal.SIGTERM)


def _children():
    if sys.platform != 'linux':
        return []
    children = []
    for entry in filter(str.isdigit, os.listdir('/proc')):
        try:
            with open(f'/proc/{entry}/stat', encoding='utf-8', errors='replace') as stat:
                parent = stat.read().rpartition(')')[2].split()[1]
        except OSError:
            continue
        if int(parent) == os.getpid():
            children.append(int(entry))
    return children


class Processes:
    """A context that ends every process started in it, and whatever those left behind."""

    def __enter__(self):
        self._started = []
        # Grandchildren whose parent died become ours, so that none outlives this process.
        _ask_linux(PR_SET_CHILD_SUBREAPER, 1)
        for number in (signal.SIGTERM, signal.SIGHUP):
            signal.signal(number, lambda *_: sys.exit(1))
        return self

    def start(self, command, environment, log):
        # In a session of its own, so that Ctrl-C reaches this process alone and the end is an orderly one.
        process = subprocess.Popen(command, env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                   stderr=log, text=True, start_new_session=True, preexec_fn=_end_with_parent)
        self._started.append(process)
        return process

    def start_quietly(self, command, environment, log):
        process = subprocess.Popen(command, env=environment, stdin=subprocess.DEVNULL, stdout=log, stderr=log,
                                   start_new_session=True, preexec_fn=_end_with_parent)
        self._started.append(process)
        return process

    def __exit__(self, *_):
        for number in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
            signal.signal(number, signal.SIG_IGN)
        for process in reversed(self._started):
            process.terminate()
            try:
                process.wait(5)
            except subprocess.TimeoutExpired:
                process.kill()
                process.wait()
        while children := _children():
            for child in children:
                os.kill(child, signal.SIGKILL)
                os.waitpid(child, 0)
