// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Foundation/PlainNumber.h"

#include <QTest>

#include <array>
#include <bit>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <limits>
#include <random>

using namespace Qt::StringLiterals;

class PlainNumberTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        // A session where a comma stands before the decimals, and a program that follows it, as Qt's do.
        qputenv("LC_ALL", "de_DE.UTF-8");
        QVERIFY2(std::setlocale(LC_ALL, ""), "the locale de_DE.UTF-8 is not installed");
        QCOMPARE(std::localeconv()->decimal_point, ",");
    }

    void theUsersLocaleIsNotHeeded()
    {
        QCOMPARE(PlainNumber::real(u"12.5"_s), std::optional(12.5));
        QCOMPARE(PlainNumber::real(u"12,5"_s), std::optional<double>());
        QCOMPARE(PlainNumber::withTwoDecimals(12.5), u"12.50"_s);
    }

    void twoDecimalsAsInC_data()
    {
        QTest::addColumn<double>("value");
        QTest::addColumn<QString>("text");
        QTest::newRow("zero") << 0.0 << u"0.00"_s;
        QTest::newRow("negative zero") << -0.0 << u"-0.00"_s;
        QTest::newRow("a tie goes to even") << 0.125 << u"0.12"_s;
        QTest::newRow("another tie") << 0.375 << u"0.38"_s;
        QTest::newRow("below a tie") << 1.005 << u"1.00"_s;
        QTest::newRow("negative") << -1.5 << u"-1.50"_s;
        QTest::newRow("no grouping") << 12345.6 << u"12345.60"_s;
        QTest::newRow("infinity") << std::numeric_limits<double>::infinity() << u"inf"_s;
        QTest::newRow("negative infinity") << -std::numeric_limits<double>::infinity() << u"-inf"_s;
        QTest::newRow("not a number") << std::numeric_limits<double>::quiet_NaN() << u"nan"_s;
        QTest::newRow("negative not a number")
            << std::copysign(std::numeric_limits<double>::quiet_NaN(), -1.0) << u"-nan"_s;
    }

    void twoDecimalsAsInC()
    {
        QFETCH(const double, value);
        QTEST(PlainNumber::withTwoDecimals(value), "text");
    }

    void everyValueIsWrittenAsPrintfWritesIt()
    {
        std::setlocale(LC_ALL, "C");
        std::mt19937_64 random(20'240'117);
        std::array<char, 400> expected{};
        for (int i = 0; i < 20'000; ++i) {
            const double value = std::bit_cast<double>(random());
            std::snprintf(expected.data(), expected.size(), "%.2f", value);
            QCOMPARE(PlainNumber::withTwoDecimals(value), QString::fromLatin1(expected.data()));
        }
    }

    void theWidestValuesFit()
    {
        QCOMPARE(PlainNumber::withTwoDecimals(std::numeric_limits<double>::max()).size(), 309 + 3);
        QCOMPARE(PlainNumber::withTwoDecimals(std::numeric_limits<double>::lowest()).size(), 1 + 309 + 3);
    }

    void aTextIsReadWholeOrNotAtAll()
    {
        QCOMPARE(PlainNumber::real(u"12.5"_s), std::optional(12.5));
        QCOMPARE(PlainNumber::real(u"12.5x"_s), std::optional<double>());
        QCOMPARE(PlainNumber::real(u""_s), std::optional<double>());
        QCOMPARE(PlainNumber::whole(u"-12"_s), std::optional(std::int64_t{-12}));
        QCOMPARE(PlainNumber::whole(u"12x"_s), std::optional<std::int64_t>());
        QCOMPARE(PlainNumber::whole(u" 12"_s), std::optional<std::int64_t>());
        QCOMPARE(PlainNumber::whole(u"12 "_s), std::optional<std::int64_t>());
        QCOMPARE(PlainNumber::whole(u""_s), std::optional<std::int64_t>());
    }
};

QTEST_GUILESS_MAIN(PlainNumberTest)
#include "PlainNumberTest.moc"
