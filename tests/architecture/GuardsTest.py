#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT

"""The table of guards that the mutation tool works from: it knows every source, and every test in it exists."""

import re
import sys
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
sys.dont_write_bytecode = True  # the source tree stays clean
sys.path.append(str(ROOT / 'tests/mutation'))

from guards import GUARDS, sources


def known_tests():
    """By the names of the programs, and of the scripts as ctest has them."""
    lists = (ROOT / 'tests/CMakeLists.txt').read_text(encoding='utf-8')
    programs = {path.stem for path in (ROOT / 'tests').rglob('*Test.cpp')}
    scripts = set(re.findall(r'add_test\(NAME ([\w/]+)', lists))
    scripts |= {f'endtoend/{name}' for name in re.findall(r'endtoend_test\((\w+)', lists)}
    return programs | scripts


class GuardsTest(unittest.TestCase):
    def test_everySourceHasGuards(self):
        self.assertEqual([name for name in sources(ROOT) if not GUARDS.get(name)], [])

    def test_everyGuardedSourceIsThere(self):
        self.assertEqual([name for name in GUARDS if not (ROOT / name).is_file()], [])

    def test_everyGuardIsATest(self):
        known = known_tests()
        self.assertEqual([test for tests in GUARDS.values() for test in tests if test not in known], [])

    def test_thePageHasEverySource(self):
        page = (ROOT / 'docs/testing.md').read_text(encoding='utf-8')
        rows = re.findall(r'^\| `([\w/]+\.cpp)` \|', page, re.MULTILINE)
        self.assertEqual([name for name in sources(ROOT) if rows.count(name.removeprefix('src/')) != 1], [])


if __name__ == '__main__':
    unittest.main()
