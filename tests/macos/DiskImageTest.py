#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT

"""What the script that makes the disk image asks of macOS's tools, which stand-ins write down here."""

import os
import subprocess
import tempfile
import unittest
from pathlib import Path

MAKE_DMG = Path(__file__).resolve().parents[2] / 'packaging/macos/make-dmg'
STAND_IN = """#!/bin/sh
echo "$(basename "$0") $*" >>"$DIARY"
case "$(basename "$0") $1" in
"plutil "*) echo 1.2.3 ;;
"hdiutil create")
    ls "$5" >"$DIARY.stage"
    for image; do :; done
    echo image >"$image" ;;
"$FAILING"*) exit 1 ;;
esac
"""


class DiskImageTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        for name in ('plutil', 'macdeployqt', 'codesign', 'hdiutil', 'xcrun'):
            tool = self.folder / name
            tool.write_text(STAND_IN, encoding='utf-8')
            tool.chmod(0o755)
        (self.folder / 'Vantelo.app/Contents').mkdir(parents=True)
        self.image = self.folder / 'Vantelo-1.2.3.dmg'

    def make(self, *arguments, failing='nothing'):
        """Runs the script; the tools' names and what they are to do, in order."""
        environment = {'PATH': f'{self.folder}:{os.environ["PATH"]}', 'DIARY': str(self.folder / 'diary'),
                       'FAILING': failing, 'TMPDIR': str(self.folder)}
        self.done = subprocess.run([MAKE_DMG, self.folder / 'Vantelo.app', *arguments], env=environment, text=True,
                                   stdout=subprocess.PIPE, stderr=subprocess.PIPE, check=False)
        steps = (self.folder / 'diary').read_text(encoding='utf-8').splitlines()
        return [' '.join(word for word in step.split(' ') if not word.startswith(str(self.folder)))
                for step in steps if not step.startswith('plutil')]

    def test_withoutAnIdentityTheProgramIsSignedAdHoc(self):
        self.assertEqual(self.make(), [
            'macdeployqt -codesign=-',
            'codesign --verify --deep --strict',
            'hdiutil create -volname Vantelo -srcfolder -format UDZO',
        ])
        self.assertEqual(self.done.stdout.splitlines()[-1], str(self.image))
        self.assertTrue(self.image.exists())

    def test_theImageHoldsTheProgramAndALinkToTheApplications(self):
        self.make()
        stage = (self.folder / 'diary.stage').read_text(encoding='utf-8')
        self.assertEqual(stage.split(), ['Applications', 'Vantelo.app'])

    def test_withAnIdentityProgramAndImageAreSignedForNotarisation(self):
        self.assertEqual(self.make('Developer ID'), [
            'macdeployqt -sign-for-notarization=Developer ID',
            'codesign --verify --deep --strict',
            'hdiutil create -volname Vantelo -srcfolder -format UDZO',
            'codesign --sign Developer ID --timestamp',
        ])

    def test_withAProfileTheImageIsNotarisedAndBearsTheProof(self):
        self.assertEqual(self.make('Developer ID', 'profile')[-2:], [
            'xcrun notarytool submit --keychain-profile profile --wait',
            'xcrun stapler staple',
        ])
        self.assertTrue(self.image.exists())

    def test_aStepThatFailsLeavesNoImage(self):
        self.image.write_text('from last time', encoding='utf-8')
        for failing in ('codesign --verify', 'codesign --sign', 'xcrun notarytool', 'xcrun stapler'):
            self.make('Developer ID', 'profile', failing=failing)
            self.assertNotEqual(self.done.returncode, 0, failing)
            self.assertFalse(self.image.exists(), failing)

    def test_theBundleItselfIsLeftAlone(self):
        self.make()
        self.assertEqual(list((self.folder / 'Vantelo.app').rglob('*')), [self.folder / 'Vantelo.app/Contents'])


unittest.main()
