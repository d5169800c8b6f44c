#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT

"""The rooms of src and the arrows between them. Every header is within reach of every source, so CMake's link lines
alone do not keep a file from including what its room does not stand on."""

import functools
import re
import unittest
from pathlib import Path

SOURCES = Path(__file__).resolve().parents[2] / 'src'
ROOMS = sorted(folder.name for folder in SOURCES.iterdir() if folder.is_dir())
LINKED = re.compile(r'target_link_libraries\((\w+)([^)]*)\)')
INCLUDED = re.compile(r'^#(?:include|import) "(\w+)/', re.MULTILINE)


def files(room):
    return [path for path in (SOURCES / room).rglob('*') if path.suffix in ('.cpp', '.h', '.mm')]


def room_of(library):
    return next((room for room in ROOMS if room.lower() == library), None)


@functools.cache
def stands_on(room):
    """The rooms that the room's own link lines name."""
    lists = [path.read_text(encoding='utf-8') for path in (SOURCES / room).rglob('CMakeLists.txt')]
    lines = [line for text in lists for line in LINKED.findall(text) if room_of(line[0]) == room]
    return {below for _, words in lines for word in words.split() if (below := room_of(word))}


def reach(room, above=()):
    """Whatever the room stands on, directly or not."""
    if room in above:
        raise AssertionError(f'a circle of rooms: {" → ".join([*above, room])}')
    return stands_on(room).union(*(reach(below, (*above, room)) for below in stands_on(room)))


class RoomsTest(unittest.TestCase):
    def test_noRoomStandsOnItself(self):
        for room in ROOMS:
            self.assertNotIn(room, reach(room))

    def test_aFileIncludesOnlyWhatItsRoomStandsOn(self):
        for room in ROOMS:
            allowed = reach(room) | {room}
            for path in files(room):
                included = set(INCLUDED.findall(path.read_text(encoding='utf-8')))
                self.assertEqual(included - allowed, set(), path)

    def test_aSystemsFolderIsIncludedFromThatSystemAlone(self):
        for room in ROOMS:
            for path in files(room):
                for system in re.findall(r'^#(?:include|import) "\w+/(Linux|macOS)/', path.read_text(encoding='utf-8'),
                                         re.MULTILINE):
                    self.assertIn(system, path.parts, path)

    def test_noRoomHoldsMoreThanAThirdOfTheLines(self):
        lines = {room: sum(len(path.read_text(encoding='utf-8').splitlines()) for path in files(room)) for room in ROOMS}
        self.assertLessEqual(max(lines.values()), sum(lines.values()) / 3, lines)

    def test_aFolderWithManyFilesHasRooms(self):
        for room in ROOMS:
            for folder in {path.parent for path in files(room)}:
                self.assertLessEqual(len([path for path in folder.iterdir() if path.suffix != '.txt' and path.is_file()]), 15,
                                     folder)

    def test_thePageNamesTheArrows(self):
        page = (SOURCES.parent / 'docs/architecture.md').read_text(encoding='utf-8')
        for room in ROOMS:
            row = re.search(rf'^\| [^|]*`{room}`[^|]*\|[^|\n]*(?:\|[^|\n]*)*\| ([^|]*) \|$', page, re.MULTILINE)
            self.assertIsNotNone(row, f'{room} has no row')
            named = set(re.findall(r'\w+', row.group(1))) & set(ROOMS)
            self.assertEqual(named, stands_on(room) - {'Foundation'}, room)


if __name__ == '__main__':
    unittest.main()
