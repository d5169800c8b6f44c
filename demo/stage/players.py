# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT

"""The demo account and the demo program."""

from .processes import Failure


def start_account(processes, build, environment):
    """Starts the account's server; returns once it listens."""
    account = processes.start([build / 'vantelo-demo-account'], environment, None)
    if not account.stdout.readline():
        raise Failure('The demo account did not start.')
    return account


def start_program(processes, build, environment, log):
    # A proxy is for the way out; the account is on this machine.
    direct = environment | {'no_proxy': '127.0.0.1', 'NO_PROXY': '127.0.0.1'}
    return processes.start_quietly([build / 'vantelo-demo'], direct, log)
