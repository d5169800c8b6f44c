// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Preferences/AppStorage.h"

#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;

/// Stores with types of their own give each preference as what was written, small whole numbers as small ones.
class StoredKindsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aWholeNumberIsReadWhateverItsWidth()
    {
        QCOMPARE(preferenceAs<std::int64_t>(QVariant(15)), 15);
        QCOMPARE(preferenceAs<std::int64_t>(QVariant(qlonglong{1} << 40)), std::int64_t{1} << 40);
    }

    void aWholeNumberIsReadFromARealOneThatIsWhole()
    {
        QCOMPARE(preferenceAs<std::int64_t>(QVariant(15.0)), 15);
        QCOMPARE(preferenceAs<std::int64_t>(QVariant(1e15)), 1'000'000'000'000'000);
        QCOMPARE(preferenceAs<std::int64_t>(QVariant(-0x1p63)), std::numeric_limits<std::int64_t>::min());
        for (const double other : {15.5, -0.5, 0x1p63, -0x1p64, 1e300, qInf(), qQNaN()})
            QVERIFY2(!preferenceAs<std::int64_t>(QVariant(other)), qPrintable(QString::number(other)));
    }

    void aRealNumberIsReadFromEitherKindOfNumber()
    {
        QCOMPARE(preferenceAs<double>(QVariant(1700000000.25)), 1700000000.25);
        QCOMPARE(preferenceAs<double>(QVariant(0)), 0.0);
    }

    void aFlagIsReadAsSuch()
    {
        QCOMPARE(preferenceAs<bool>(QVariant(true)), true);
        QCOMPARE(preferenceAs<bool>(QVariant(false)), false);
        QCOMPARE(preferenceAs<bool>(QVariant(u"1"_s)), true);
        QCOMPARE(preferenceAs<bool>(QVariant(u"0"_s)), false);
    }

    void listsAndBytesAreNeitherNumberNorFlag()
    {
        for (const QVariant &stored : {QVariant(QStringList{u"1"_s}), QVariant("1"_ba)}) {
            QVERIFY(!preferenceAs<std::int64_t>(stored));
            QVERIFY(!preferenceAs<double>(stored));
            QVERIFY(!preferenceAs<bool>(stored));
        }
    }

    void aNumberOrAFlagIsNoText()
    {
        QVERIFY(!preferenceAs<QString>(QVariant(15)));
        QVERIFY(!preferenceAs<QString>(QVariant(true)));
    }

    void aFlagIsNoWholeNumber() { QVERIFY(!preferenceAs<std::int64_t>(QVariant(true))); }

    void anAbsentValueIsNothing()
    {
        QVERIFY(!preferenceAs<QString>(QVariant()));
        QVERIFY(!preferenceAs<double>(QVariant()));
    }
};

QTEST_GUILESS_MAIN(StoredKindsTest)
#include "StoredKindsTest.moc"
