// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "ReleaseNotes.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString changelog =
    u"# Changelog\n\nAll changes.\n\n"
    "## Unreleased\n\n### Added\n\n- A dot.\n\n"
    "## 1.10.0 - 2026-12-01\n\n### Fixed\n\n- The menu (`./dev run`)\n  opens,\n  at once.\n- So do windows.\n\n"
    "## 1.1.0\n\n## 1.0.0\n- The first.\n"_s;

} // namespace

class ReleaseNotesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theNotesAreThoseOfTheVersionAsPlainText()
    {
        QCOMPARE(releaseNotes(changelog, u"1.10.0"_s).value(),
            u"Fixed\n\n- The menu (./dev run) opens, at once.\n- So do windows."_s);
        QCOMPARE(releaseNotes(changelog, u"1.0.0"_s).value(), u"- The first."_s);
    }

    void aVersionThatIsNotOutYetHasWhatIsUnreleased()
    {
        QCOMPARE(releaseNotes(changelog, u"2.0.0"_s).value(), u"Added\n\n- A dot."_s);
    }

    void nothingSaidIsNoNotes()
    {
        QVERIFY(!releaseNotes(changelog, u"1.1.0"_s));
        QVERIFY(!releaseNotes(u"# Changelog\n"_s, u"1.0.0"_s));
    }
};

QTEST_GUILESS_MAIN(ReleaseNotesTest)
#include "ReleaseNotesTest.moc"
