// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "API/FormatNumber.h"

#include <QLocale>
#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;

class FormatNumberTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { QLocale::setDefault(QLocale::system()); }

    void thousandsAreGroupedByCommas_data()
    {
        QTest::addColumn<qint64>("number");
        QTest::addColumn<QString>("text");
        QTest::newRow("zero") << qint64{0} << u"0"_s;
        QTest::newRow("three digits") << qint64{999} << u"999"_s;
        QTest::newRow("four digits") << qint64{1000} << u"1,000"_s;
        QTest::newRow("five digits") << qint64{12345} << u"12,345"_s;
        QTest::newRow("two groups") << qint64{1234567} << u"1,234,567"_s;
        QTest::newRow("negative") << qint64{-1234} << u"-1,234"_s;
        QTest::newRow("largest") << std::numeric_limits<qint64>::max() << u"9,223,372,036,854,775,807"_s;
        QTest::newRow("smallest") << std::numeric_limits<qint64>::min() << u"-9,223,372,036,854,775,808"_s;
    }

    void thousandsAreGroupedByCommas()
    {
        QFETCH(const qint64, number);
        QTEST(formatNumber(number), "text");
    }

    void theSeparatorIsACommaInEveryLocale_data()
    {
        QTest::addColumn<QLocale>("locale");
        QTest::newRow("a period in German") << QLocale(QLocale::German);
        QTest::newRow("a narrow blank in French") << QLocale(QLocale::French);
        QTest::newRow("groups of two in Hindi") << QLocale(QLocale::Hindi, QLocale::India);
        QTest::newRow("a typographic minus in Swedish") << QLocale(QLocale::Swedish);
        QTest::newRow("other digits in Arabic") << QLocale(QLocale::Arabic, QLocale::Egypt);
    }

    void theSeparatorIsACommaInEveryLocale()
    {
        QFETCH(const QLocale, locale);
        QLocale::setDefault(locale);
        QCOMPARE(formatNumber(-1234567), u"-1,234,567"_s);
    }
};

QTEST_GUILESS_MAIN(FormatNumberTest)
#include "FormatNumberTest.moc"
