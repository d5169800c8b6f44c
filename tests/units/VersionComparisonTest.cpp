// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Update/UpdateManager.h"

#include <QTest>

using namespace Qt::StringLiterals;

class VersionComparisonTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aVersionIsNewerOrNot_data()
    {
        QTest::addColumn<QString>("remote");
        QTest::addColumn<QString>("current");
        QTest::addColumn<bool>("newer");
        const auto row = [](const char *name, const QString &remote, const QString &current, bool newer) {
            QTest::newRow(name) << remote << current << newer;
        };
        row("numbers, not text", u"1.10.0"_s, u"1.9.9"_s, true);
        row("the same", u"1.2.0"_s, u"1.2.0"_s, false);
        row("a missing piece is zero", u"1.2"_s, u"1.2.0"_s, false);
        row("the other way round", u"1.2.0"_s, u"1.2"_s, false);
        row("one piece more", u"1.2.0.1"_s, u"1.2"_s, true);
        row("one piece less", u"1.2"_s, u"1.2.0.1"_s, false);
        row("older", u"1.1.9"_s, u"1.2.0"_s, false);
        row("the first difference decides", u"2.0.0"_s, u"1.9.9"_s, true);
        row("a suffix drops its piece", u"2.0-beta"_s, u"1.9"_s, true);
        row("a suffix is not newer", u"2.0-beta"_s, u"2.0"_s, false);
        row("a dropped piece moves the next one up", u"1.x.5"_s, u"1.4"_s, true);
        row("no number at all", u"abc"_s, u"0.0.0"_s, false);
        row("empty", u""_s, u"0.0.0"_s, false);
        row("both empty", u""_s, u""_s, false);
        row("empty pieces are dropped", u"1..2"_s, u"1.1"_s, true);
        row("dots around", u".1.2."_s, u"1.2"_s, false);
        row("a plus sign", u"+2.0"_s, u"1.0"_s, true);
        row("a minus sign", u"-1.0"_s, u"0.0"_s, false);
        row("zero is more than a negative piece", u"1"_s, u"1.-1"_s, true);
        row("a piece beyond 64 bits is dropped", u"99999999999999999999.1"_s, u"1.0"_s, false);
        row("the largest piece counts", u"9223372036854775807"_s, u"9223372036854775806"_s, true);
        row("white space makes a piece invalid", u"1. 9"_s, u"1.2"_s, false);
        row("white space behind, too", u"1.9 "_s, u"1.2"_s, false);
        row("no digits of other scripts", u"٩"_s, u"1"_s, false);
        row("a leading v", u"v2.0"_s, u"1.0"_s, false);
    }

    void aVersionIsNewerOrNot()
    {
        QFETCH(const QString, remote);
        QFETCH(const QString, current);
        QTEST(UpdateManager::isVersionNewer(remote, current), "newer");
    }
};

QTEST_GUILESS_MAIN(VersionComparisonTest)
#include "VersionComparisonTest.moc"
