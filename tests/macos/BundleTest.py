#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT

"""What stands in the macOS bundle beside the program.

usage: BundleTest.py VERSION INFO_PLIST [ICON]; without an icon file, one is made from the drawing
"""

import plistlib
import struct
import subprocess
import sys
import tempfile
import unittest
import zlib
from pathlib import Path

PROJECT = Path(__file__).resolve().parents[2]
SIDES = {'ic11': 32, 'ic12': 64, 'ic07': 128, 'ic13': 256, 'ic08': 256, 'ic14': 512, 'ic09': 512, 'ic10': 1024}


def made_icon():
    with tempfile.TemporaryDirectory() as folder:
        icon = Path(folder) / 'Vantelo.icns'
        drawing = PROJECT / 'packaging/icon/app.vantelo.Vantelo.svg'
        subprocess.run([PROJECT / 'packaging/macos/make-icns', drawing, icon], check=True)
        return icon.read_bytes()


def chunks(data, offset, length_covers_header):
    """The pieces of an icon file (type, length, content) or of a PNG picture (length, type, content, checksum)."""
    while offset < len(data):
        if length_covers_header:
            kind, length = struct.unpack_from('>4sI', data, offset)
            content, offset = data[offset + 8:offset + length], offset + length
        else:
            length, kind = struct.unpack_from('>I4s', data, offset)
            content = data[offset + 8:offset + 8 + length]
            (checksum,) = struct.unpack_from('>I', data, offset + 8 + length)
            assert checksum == zlib.crc32(kind + content)
            offset += 12 + length
        yield kind.decode('ascii'), content


def png_side(picture):
    """The side of a whole, square PNG picture with transparency."""
    assert picture.startswith(b'\x89PNG\r\n\x1a\n')
    pieces = list(chunks(picture, 8, length_covers_header=False))
    width, height, depth, colour_type = struct.unpack_from('>IIBB', pieces[0][1])
    assert (width, depth, colour_type) == (height, 8, 6)
    pixels = zlib.decompress(b''.join(content for kind, content in pieces if kind == 'IDAT'))
    assert len(pixels) == height * (1 + 4 * width)
    assert pieces[-1][0] == 'IEND'
    return width


class PropertyListTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.properties = plistlib.loads(INFO_PLIST.read_bytes())

    def test_theBundleIsTheProgramInItsDefaultsDomain(self):
        self.assertEqual(self.properties['CFBundleIdentifier'], 'app.vantelo.Vantelo')
        self.assertEqual(self.properties['CFBundleName'], 'Vantelo')
        self.assertEqual(self.properties['CFBundleExecutable'], 'Vantelo')
        self.assertEqual(self.properties['CFBundlePackageType'], 'APPL')
        self.assertEqual(self.properties['CFBundleInfoDictionaryVersion'], '6.0')

    def test_bothVersionsAreTheProjects(self):
        self.assertRegex(VERSION, r'^\d+\.\d+\.\d+$')
        self.assertEqual(self.properties['CFBundleShortVersionString'], VERSION)
        self.assertEqual(self.properties['CFBundleVersion'], VERSION)

    def test_theProgramLivesInTheMenuBarAlone(self):
        self.assertIs(self.properties['LSUIElement'], True)
        self.assertEqual(self.properties['NSPrincipalClass'], 'NSApplication')

    def test_theStartTakesNoFocus(self):
        self.assertEqual(self.properties['LSEnvironment'], {'QT_MAC_DISABLE_FOREGROUND_APPLICATION_TRANSFORM': '1'})

    def test_windowsAreSharpOnRetinaScreens(self):
        self.assertIs(self.properties['NSHighResolutionCapable'], True)

    def test_theOldestSystemIsTheOneCompiledFor(self):
        self.assertEqual(self.properties['LSMinimumSystemVersion'], '13.3')

    def test_theIconIsNamed(self):
        self.assertEqual(self.properties['CFBundleIconFile'], 'Vantelo')

    def test_nothingWasLeftToFillIn(self):
        self.assertNotRegex(INFO_PLIST.read_text(encoding='utf-8'), r'@[A-Z_]+@|\$\{')


class IconTest(unittest.TestCase):
    def test_everySizeIsAPictureOfThatSize(self):
        data = ICON.read_bytes() if ICON else made_icon()
        (whole,) = chunks(data, 0, length_covers_header=True)
        self.assertEqual(whole[0], 'icns')
        sides = {kind: png_side(picture) for kind, picture in chunks(whole[1], 0, length_covers_header=True)}
        self.assertEqual(sides, SIDES)


if __name__ == '__main__':
    if len(sys.argv) not in (3, 4):
        sys.exit(__doc__.strip())
    VERSION, INFO_PLIST, ICON, *_ = [sys.argv[1], *map(Path, sys.argv[2:]), None]
    unittest.main(argv=sys.argv[:1])
