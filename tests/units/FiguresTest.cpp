// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "API/Figures.h"
#include "API/InsightsResponse.h"

#include <QTest>

#include <clocale>
#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

std::int64_t conversionsOf(const std::vector<ActionItem> &actions)
{
    InsightRow row;
    row.actions = actions;
    return Figures::sevenDay(row).conversions;
}

InsightRow rowOfAllMembers()
{
    return {
        .impressions = u"185"_s,
        .spend = u"14.35"_s,
        .inline_link_clicks = u"9"_s,
        .cost_per_inline_link_click = u"1.594444"_s,
        .frequency = u"1.25"_s,
        .reach = u"148"_s,
        .inline_link_click_ctr = u"4.864865"_s,
        .actions = std::vector<ActionItem>{{u"lead"_s, u"4"_s}},
    };
}

} // namespace

class FiguresTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { std::setlocale(LC_ALL, "C"); }

    void textsAreReadAsWholeNumbersAndAmounts_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<qint64>("wholeNumber");
        QTest::addColumn<double>("amount");
        const auto row = [](const char *name, const QString &text, qint64 whole, double amount) {
            QTest::newRow(name) << text << whole << amount;
        };
        row("digits", u"1234"_s, 1234, 1234.0);
        row("grouped", u"1,234"_s, 0, 0.0);
        row("plus sign", u"+42"_s, 42, 42.0);
        row("minus sign", u"-7"_s, -7, -7.0);
        row("fraction", u"12.5"_s, 0, 12.5);
        row("whole with a point", u"12.0"_s, 0, 12.0);
        row("leading space", u" 12.5"_s, 0, 0.0);
        row("leading space before digits", u" 12"_s, 0, 0.0);
        row("leading tab", u"\t1"_s, 0, 0.0);
        row("leading line feed", u"\n1"_s, 0, 0.0);
        row("leading vertical tab", u"\v1"_s, 0, 0.0);
        row("leading form feed", u"\f1"_s, 0, 0.0);
        row("leading carriage return", u"\r1"_s, 0, 0.0);
        row("trailing space", u"12 "_s, 0, 0.0);
        row("exponent", u"1e2"_s, 0, 100.0);
        row("empty", u""_s, 0, 0.0);
        row("sign alone", u"+"_s, 0, 0.0);
        row("minus alone", u"-"_s, 0, 0.0);
        row("two signs", u"+-7"_s, 0, 0.0);
        row("two plus signs", u"++7"_s, 0, 0.0);
        row("minus plus", u"-+7"_s, 0, 0.0);
        row("hexadecimal", u"0x1p4"_s, 0, 16.0);
        row("infinity", u"inf"_s, 0, infinity);
        row("negative infinity in words", u"-INFINITY"_s, 0, -infinity);
        row("beyond a double", u"1e999"_s, 0, infinity);
        row("decimal comma", u"12,5"_s, 0, 0.0);
        row("beyond 2^53", u"9007199254740993"_s, 9007199254740993, 9007199254740992.0);
        row("largest", u"9223372036854775807"_s, std::numeric_limits<qint64>::max(), 9223372036854775807.0);
        row("smallest", u"-9223372036854775808"_s, std::numeric_limits<qint64>::min(), -9223372036854775808.0);
        row("one too large", u"9223372036854775808"_s, 0, 9223372036854775808.0);
        row("leading zeros", u"007"_s, 7, 7.0);
        row("Arabic digits", u"١٢"_s, 0, 0.0);
        row("a NUL inside",
            QString::fromLatin1("12\0"
                                "3",
                4),
            0, 0.0);
        row("a NUL at the end", QString::fromLatin1("12\0", 3), 0, 0.0);
        row("half a surrogate pair", u"1"_s + QChar(0xD800), 0, 0.0);
        row("words", u"many"_s, 0, 0.0);
    }

    void textsAreReadAsWholeNumbersAndAmounts()
    {
        QFETCH(const QString, text);
        QFETCH(const double, amount);
        QTEST(qint64{Figures::wholeNumber(text)}, "wholeNumber");
        // Not QCOMPARE for doubles, which takes neighbours for equal.
        QVERIFY2(Figures::amount(text) == amount, qPrintable(QString::number(Figures::amount(text))));
    }

    void notANumberIsAnAmount() { QVERIFY(std::isnan(Figures::amount(u"nan"_s))); }

    void anAbsentTextIsZero()
    {
        QCOMPARE(Figures::wholeNumber(std::nullopt), 0);
        QCOMPARE(Figures::amount(std::nullopt), 0.0);
    }

    void amountsKeepThePointUnderAGermanLocale()
    {
        // Qt does the same at start-up in a German session.
        if (!std::setlocale(LC_ALL, "de_DE.UTF-8"))
            QFAIL("the locale de_DE.UTF-8 is not installed");
        QCOMPARE(Figures::amount(u"12.5"_s), 12.5);
        QCOMPARE(Figures::amount(u"12,5"_s), 0.0);
    }

    void todayTakesItsFourMembers()
    {
        const TodayStats expected{.impressions = 185, .spend = 14.35, .linkClicks = 9, .cpc = 1.594444};
        QVERIFY(Figures::today(rowOfAllMembers()) == expected);
    }

    void sevenDayTakesItsSevenMembers()
    {
        const SevenDayStats expected{.spend = 14.35,
            .impressions = 185,
            .frequency = 1.25,
            .reach = 148,
            .cpc = 1.594444,
            .ctr = 4.864865,
            .conversions = 4};
        QVERIFY(Figures::sevenDay(rowOfAllMembers()) == expected);
    }

    void anEmptyRowIsAllZero()
    {
        QVERIFY(Figures::today({}) == TodayStats());
        QVERIFY(Figures::sevenDay({}) == SevenDayStats());
    }

    void allThreeResultTypesAddUp()
    {
        QCOMPARE(conversionsOf({{u"purchase"_s, u"3"_s}, {u"lead"_s, u"2"_s},
                     {u"complete_registration"_s, std::nullopt}, {u"page_engagement"_s, u"50"_s}}),
            5);
    }

    void eachResultTypeCountsAlone_data()
    {
        QTest::addColumn<QString>("type");
        for (const char *const type : {"lead", "purchase", "complete_registration"})
            QTest::newRow(type) << QString::fromLatin1(type);
    }

    void eachResultTypeCountsAlone()
    {
        QFETCH(const QString, type);
        QCOMPARE(conversionsOf({{type, u"7"_s}}), 7);
    }

    void correctionsAreTakenOff()
    {
        QCOMPARE(conversionsOf({{u"lead"_s, u"5"_s}, {u"lead"_s, u"-2"_s}}), 3);
        QCOMPARE(conversionsOf({{u"lead"_s, u"-2"_s}, {u"purchase"_s, u"-3"_s}}), -5);
    }

    void everyMatchingEntryCountsDuplicatesIncluded()
    {
        QCOMPARE(conversionsOf({{u"purchase"_s, u"1"_s}, {u"purchase"_s, u"4"_s}}), 5);
    }

    void aValueThatIsNoWholeNumberContributesNothing()
    {
        QCOMPARE(conversionsOf({{u"purchase"_s, u"2.5"_s}, {u"lead"_s, u"1"_s}}), 1);
    }

    void resultTypesMatchExactly()
    {
        QCOMPARE(conversionsOf({{u"Purchase"_s, u"1"_s}, {u"LEAD"_s, u"1"_s}, {u"lead "_s, u"1"_s},
                     {u"onsite_conversion.lead"_s, u"1"_s}, {std::nullopt, u"1"_s}, {u""_s, u"1"_s}}),
            0);
    }

    void noActionsGiveNoConversions()
    {
        QCOMPARE(conversionsOf({}), 0);
        QCOMPARE(Figures::sevenDay({}).conversions, 0);
    }

    void theSumOfResultsSaturates()
    {
        const auto largest = std::numeric_limits<std::int64_t>::max();
        const auto smallest = std::numeric_limits<std::int64_t>::min();
        QCOMPARE(conversionsOf({{u"lead"_s, QString::number(largest)}, {u"lead"_s, u"1"_s}}), largest);
        QCOMPARE(conversionsOf({{u"lead"_s, QString::number(smallest)}, {u"lead"_s, u"-1"_s}}), smallest);
    }
};

QTEST_GUILESS_MAIN(FiguresTest)
#include "FiguresTest.moc"
