#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT

"""What makes the disk image: parts linked here by a linker for macOS and read by its own kind of tools; stand-ins write
down what is asked of Apple's others."""

import functools
import os
import plistlib
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

MAKE_DMG = Path(__file__).resolve().parents[2] / 'packaging/macos/make-dmg'
STAND_IN = """#!/bin/sh
echo "$(basename "$0") $*" >>"$DIARY"
case "$(basename "$0") $*" in
"plutil "*) echo 1.2.3 ;;
"macdeployqt "*)
    cp -R "$DEPLOYED/." "$1/Contents"
    echo "$TOLD" ;;
"hdiutil create"*)
    cp -R "$5" "$DIARY.stage"
    for image; do :; done
    echo image >"$image" ;;
"$FAILING"*) exit 1 ;;
esac
"""
QT_CORE = '@rpath/QtCore.framework/Versions/A/QtCore'
BESIDE = '@executable_path/../Frameworks'


def tool(name):
    """A tool for macOS's kind of files, by its name here or there."""
    for found in (name, f'llvm-{name.replace("_", "-")}-19', f'{name}-19'):
        if path := shutil.which(found):
            return path
    print(f'not run: {name} is missing')
    sys.exit(1 if os.environ.get('CI') else 77)


@functools.cache
def linked(loads, search, oldest):
    linker = [tool('ld64.lld'), '-arch', 'arm64', '-platform_version', 'macos', oldest, oldest, '-dylib']
    with tempfile.TemporaryDirectory() as folder:
        others = [f'{folder}/{number}' for number in range(len(loads))]
        for name, other in zip(loads, others):
            subprocess.run([*linker, '-install_name', name, '-o', other], check=True)
        places = [word for place in search for word in ('-rpath', place)]
        subprocess.run([*linker, '-headerpad', '0x400', *places, '-o', f'{folder}/linked', *others], check=True)
        return Path(folder, 'linked').read_bytes()


class DiskImageTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name).resolve()
        self.tools = self.folder / 'tools'
        self.tools.mkdir()
        for name in ('plutil', 'macdeployqt', 'codesign', 'hdiutil', 'xcrun'):
            (self.tools / name).write_text(STAND_IN, encoding='utf-8')
            (self.tools / name).chmod(0o755)
        for name in ('otool', 'install_name_tool'):
            (self.tools / name).symlink_to(tool(name))
        self.bundle = self.folder / 'Vantelo.app'
        self.deployed = self.folder / 'deployed'
        self.image = self.folder / 'Vantelo-1.2.3.dmg'
        self.link(self.bundle / 'Contents/MacOS/Vantelo', loads=[QT_CORE], search=[BESIDE])
        (self.bundle / 'Contents/Info.plist').write_bytes(
            plistlib.dumps({'CFBundleExecutable': 'Vantelo', 'LSMinimumSystemVersion': '13.3'}))
        self.deploy('Frameworks/QtCore.framework/Versions/A/QtCore', loads=['/usr/lib/libz.1.dylib'])
        self.deploy('PlugIns/platforms/libqcocoa.dylib', loads=[QT_CORE])

    def link(self, path, loads=(), search=(), oldest='13.3'):
        """A Mach-O file that loads others by these names, looks for them in these places, and needs this system."""
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(linked(tuple(loads), tuple(search), oldest))

    def deploy(self, path, **properties):
        """Puts such a file where the deployment tool will take it from."""
        self.link(self.deployed / path, **properties)

    def make(self, *arguments, failing='nothing', told=''):
        """Runs the script; the tools' names and what they are to do, in order."""
        environment = {'PATH': f'{self.tools}:{os.environ["PATH"]}', 'DIARY': str(self.folder / 'diary'), 'TOLD': told,
                       'FAILING': failing, 'TMPDIR': str(self.folder), 'DEPLOYED': str(self.deployed)}
        self.done = subprocess.run([MAKE_DMG, self.bundle, *arguments], env=environment, text=True,
                                   stdout=subprocess.PIPE, stderr=subprocess.PIPE, check=False)
        steps = (self.folder / 'diary').read_text(encoding='utf-8').splitlines()
        return [' '.join(os.path.basename(word) if word.startswith(str(self.folder)) else word
                         for word in step.split(' ')) for step in steps if not step.startswith('plutil')]

    def made(self):
        """What the image holds of the bundle."""
        return self.folder / 'diary.stage/Vantelo.app/Contents'

    def assert_refused(self, words):
        self.assertNotEqual(self.done.returncode, 0)
        self.assertIn(words, self.done.stderr)
        self.assertFalse(self.image.exists())

    def test_withoutAnIdentityEveryPartIsSignedAdHocBeforeWhatLoadsIt(self):
        self.assertEqual(self.make(), [
            'macdeployqt Vantelo.app',
            'codesign --force --sign - QtCore',
            'codesign --force --sign - libqcocoa.dylib',
            'codesign --force --sign - Vantelo.app',
            'codesign --verify --deep --strict Vantelo.app',
            'hdiutil create -volname Vantelo -srcfolder stage -format UDZO draft.dmg',
        ], self.done.stderr)
        self.assertEqual(self.done.stdout.splitlines()[-1], str(self.image))
        self.assertTrue(self.image.exists())

    def test_theImageHoldsTheProgramAndALinkToTheApplications(self):
        self.make()
        self.assertEqual({path.name for path in (self.folder / 'diary.stage').iterdir()}, {'Applications', 'Vantelo.app'})

    def test_withAnIdentityProgramAndImageAreSignedForNotarisation(self):
        signed = '--sign Developer ID --options runtime --timestamp'
        self.assertEqual(self.make('Developer ID')[1:], [
            f'codesign --force {signed} QtCore',
            f'codesign --force {signed} libqcocoa.dylib',
            f'codesign --force {signed} Vantelo.app',
            'codesign --verify --deep --strict Vantelo.app',
            'hdiutil create -volname Vantelo -srcfolder stage -format UDZO draft.dmg',
            'codesign --sign Developer ID --timestamp draft.dmg',
        ])

    def test_withAProfileTheImageIsNotarisedAndBearsTheProof(self):
        self.assertEqual(self.make('Developer ID', 'profile')[-2:], [
            'xcrun notarytool submit draft.dmg --keychain-profile profile --wait',
            'xcrun stapler staple draft.dmg',
        ])
        self.assertTrue(self.image.exists())

    def test_aStepThatFailsLeavesNoImage(self):
        self.image.write_text('from last time', encoding='utf-8')
        for failing in ('codesign --force', 'codesign --verify', 'codesign --sign', 'xcrun notarytool', 'xcrun stapler'):
            self.make('Developer ID', 'profile', failing=failing)
            self.assertNotEqual(self.done.returncode, 0, failing)
            self.assertFalse(self.image.exists(), failing)

    def test_theBundleItselfIsLeftAlone(self):
        before = {path: path.read_bytes() for path in self.bundle.rglob('*') if path.is_file()}
        self.make()
        self.assertEqual({path: path.read_bytes() for path in self.bundle.rglob('*') if path.is_file()}, before)

    def test_whatTheDeploymentToolFoundWrongIsTold(self):
        self.make(told='ERROR: Cannot resolve rpath "@rpath/QtPdf.framework/Versions/A/QtPdf"')
        self.assert_refused('QtPdf')

    def test_aReferenceOutOfTheBundleIsRefused(self):
        self.deploy('PlugIns/styles/libqmacstyle.dylib', loads=['/opt/homebrew/opt/zstd/lib/libzstd.1.dylib'])
        self.make()
        self.assert_refused('PlugIns/styles/libqmacstyle.dylib: /opt/homebrew/opt/zstd/lib/libzstd.1.dylib is not in')

    def test_aReferenceBesideTheLoaderThatIsMissingIsRefused(self):
        self.deploy('Frameworks/QtCore.framework/Versions/A/QtCore', loads=['@loader_path/libicudata.78.dylib'])
        self.make()
        self.assert_refused('QtCore: @loader_path/libicudata.78.dylib is not in')

    def test_aReferenceThatLeadsOutOfTheBundleAgainIsRefused(self):
        self.link(self.folder / 'outside.dylib')
        (self.deployed / 'Frameworks/libz.dylib').symlink_to(self.folder / 'outside.dylib')
        self.deploy('PlugIns/tls/libqopensslbackend.dylib', loads=['@executable_path/../Frameworks/libz.dylib'])
        self.make()
        self.assert_refused('@executable_path/../Frameworks/libz.dylib is not in')

    def test_aSearchPathOfTheLibraryItselfResolvesItsReference(self):
        self.deploy('Frameworks/own/libssl.3.dylib')
        self.deploy('PlugIns/tls/libqopensslbackend.dylib', loads=['@rpath/libssl.3.dylib'],
                    search=['@loader_path/../../Frameworks/own'])
        self.make()
        self.assertTrue(self.image.exists(), self.done.stderr)

    def test_aBundleWithoutWindowsIsRefused(self):
        shutil.rmtree(self.deployed / 'PlugIns')
        self.make()
        self.assert_refused('PlugIns/platforms/libqcocoa.dylib is missing')

    def test_plugInsWithoutUseAreTakenAwayWithWhatTheyAloneNeed(self):
        self.deploy('Frameworks/QtSvg.framework/Versions/A/QtSvg', loads=[QT_CORE])
        (self.deployed / 'Frameworks/QtSvg.framework/QtSvg').symlink_to('Versions/A/QtSvg')
        self.deploy('Frameworks/libcrypto.3.dylib')
        self.deploy('PlugIns/iconengines/libqsvgicon.dylib',
                    loads=['@rpath/QtSvg.framework/Versions/A/QtSvg', '@rpath/libgone.dylib'])
        self.deploy('PlugIns/tls/libqopensslbackend.dylib', loads=['@rpath/libcrypto.3.dylib'])
        self.make()
        self.assertEqual({path.name for path in (self.made() / 'Frameworks').iterdir()},
                         {'QtCore.framework', 'libcrypto.3.dylib'}, self.done.stderr)
        self.assertEqual({path.name for path in (self.made() / 'PlugIns').iterdir()}, {'platforms', 'tls'})

    def test_theOldestSystemIsThatOfThePartThatNeedsTheNewest(self):
        for oldest in ('9.0', '14.0', '13.11'):
            self.deploy(f'PlugIns/tls/lib{oldest}.dylib', oldest=oldest)
        self.make()
        self.assertEqual(plistlib.loads((self.made() / 'Info.plist').read_bytes())['LSMinimumSystemVersion'], '14.0')

    def test_searchPathsOutOfTheBundleAreDropped(self):
        self.deploy('PlugIns/platforms/libqcocoa.dylib', loads=[QT_CORE], search=['/opt/homebrew/lib', '@loader_path'])
        self.make()
        commands = subprocess.run([self.tools / 'otool', '-l', self.made() / 'PlugIns/platforms/libqcocoa.dylib'],
                                  check=True, stdout=subprocess.PIPE, text=True).stdout
        self.assertNotIn('/opt/homebrew', commands)
        self.assertIn('path @loader_path ', commands)


for needed in ('otool', 'install_name_tool', 'ld64.lld'):
    tool(needed)
unittest.main()
