# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT

"""The demo account and the demo program."""

import configparser
import os
import shutil
from pathlib import Path

from .processes import Failure

_DEMO = Path(__file__).resolve().parent.parent


def preference_file(environment):
    """Where the demo program keeps its preferences."""
    home = environment.get('XDG_CONFIG_HOME') or os.path.join(environment['HOME'], '.config')
    return Path(home) / 'Vantelo' / 'Vantelo Demo.conf'


def credentials():
    """The demo account's access token and ID."""
    return _credentials_in(_DEMO / 'credentials.conf')


def stored_credentials(environment):
    """The access token and the account ID in the preferences; None for what is not there."""
    return _credentials_in(preference_file(environment))


def _credentials_in(path):
    parser = configparser.ConfigParser()
    parser.optionxform = str
    parser.read(path, encoding='utf-8')
    return [parser.get('General', key, fallback=None) for key in ('accessToken', 'adAccountId')]


def write_credentials(preferences):
    """Puts the demo account's credentials where the program finds them at its next refresh."""
    preferences.parent.mkdir(mode=0o700, parents=True, exist_ok=True)
    draft = preferences.with_name(preferences.name + '.draft')
    draft.touch(mode=0o600)
    shutil.copyfile(_DEMO / 'credentials.conf', draft)
    draft.replace(preferences)


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
