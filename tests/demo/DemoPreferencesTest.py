#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT

"""Where the demo puts its credentials, on either system; "defaults" is a stand-in for macOS's own."""

import os
import sys
import tempfile
import unittest
from pathlib import Path

sys.dont_write_bytecode = True
sys.path.append(str(Path(__file__).resolve().parents[2] / 'demo'))

from stage.preferences import DefaultsDomain, PreferenceFile, credentials

DEFAULTS = """#!/bin/sh
printf '%s\\n' "$*" >>"$LOG"
[ "$1" != read ]
"""


class DemoPreferencesTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self._folder = Path(folder.name)

    def test_theFileAppearsWholeAndForTheUserAlone(self):
        stored = PreferenceFile({'HOME': self._folder})
        self.assertFalse(stored.exist())
        stored.write_credentials()
        self.assertEqual(stored.credentials(), credentials())
        (file,) = self._folder.rglob('*.*onf')
        self.assertEqual((file.name, file.stat().st_mode & 0o777), ('Vantelo Demo.conf', 0o600))
        stored.remove()
        self.assertFalse(stored.exist())

    def test_theDefaultsDomainIsTheDemosOwn(self):
        (self._folder / 'defaults').write_text(DEFAULTS)
        (self._folder / 'defaults').chmod(0o755)
        log = self._folder / 'log'
        stored = DefaultsDomain({'PATH': f'{self._folder}:{os.environ["PATH"]}', 'LOG': str(log)})
        self.assertFalse(stored.exist())
        stored.write_credentials()
        stored.remove()
        token, account = credentials()
        self.assertEqual(log.read_text().splitlines(), [
            'read app.vantelo.Vantelo Demo',
            f'write app.vantelo.Vantelo Demo accessToken -string {token}',
            f'write app.vantelo.Vantelo Demo adAccountId -string {account}',
            'delete app.vantelo.Vantelo Demo'])


unittest.main()
