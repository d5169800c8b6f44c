# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT

"""Where the demo program keeps its preferences, seen from outside."""

import configparser
import os
import shutil
import subprocess
import sys
from pathlib import Path

_CREDENTIALS = Path(__file__).resolve().parent.parent / 'credentials.conf'


def credentials():
    """The demo account's access token and ID."""
    return _credentials_in(_CREDENTIALS)


def _credentials_in(path):
    parser = configparser.ConfigParser()
    parser.optionxform = str
    parser.read(path, encoding='utf-8')
    return [parser.get('General', key, fallback=None) for key in ('accessToken', 'adAccountId')]


def preferences(environment):
    return DefaultsDomain(environment) if sys.platform == 'darwin' else PreferenceFile(environment)


class PreferenceFile:
    """On Linux."""

    def __init__(self, environment):
        home = environment.get('XDG_CONFIG_HOME') or os.path.join(environment['HOME'], '.config')
        self._path = Path(home) / 'Vantelo' / 'Vantelo Demo.conf'

    def exist(self):
        return self._path.exists()

    def remove(self):
        self._path.unlink(missing_ok=True)

    def credentials(self):
        """The access token and the account ID; None for what is not there."""
        return _credentials_in(self._path)

    def write_credentials(self):
        """Puts the demo account's credentials where the program finds them at its next refresh."""
        self._path.parent.mkdir(mode=0o700, parents=True, exist_ok=True)
        draft = self._path.with_name(self._path.name + '.draft')
        draft.touch(mode=0o600)
        shutil.copyfile(_CREDENTIALS, draft)
        draft.replace(self._path)


class DefaultsDomain:
    """On macOS."""

    _NAME = 'app.vantelo.Vantelo Demo'

    def __init__(self, environment):
        self._environment = environment

    def exist(self):
        return self._defaults('read').returncode == 0

    def remove(self):
        self._defaults('delete')

    def write_credentials(self):
        """Puts the demo account's credentials where the program finds them at its next refresh."""
        for key, value in zip(('accessToken', 'adAccountId'), credentials()):
            self._defaults('write', key, '-string', value)

    def _defaults(self, verb, *arguments):
        return subprocess.run(['defaults', verb, self._NAME, *arguments], env=self._environment, check=False,
                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
