// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "MenuBar/ShownRows.h"

#include <QTest>

using namespace Qt::StringLiterals;
using Change = ShownRows::Change;

namespace {

constexpr bool closed = false;
constexpr bool open = true;

MenuRows threeRows(const QString &line)
{
    return {MenuRow::line(line), MenuRow::divider(), MenuRow::button(u"Quit"_s, [] {})};
}

QStringList texts(const ShownRows &shown)
{
    QStringList texts;
    for (const MenuRow &row : shown.rows())
        texts << row.text;
    return texts;
}

} // namespace

class ShownRowsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theFirstRowsNeedItems()
    {
        ShownRows shown;
        QCOMPARE(shown.setNewest(threeRows(u"Today"_s), closed), Change::Items);
        QCOMPARE(texts(shown), QStringList({u"Today"_s, u""_s, u"Quit"_s}));
    }

    void rowsOfTheSameKindsKeepTheirItems_data()
    {
        QTest::addColumn<bool>("menuIsOpen");
        QTest::newRow("closed") << closed;
        QTest::newRow("open") << open;
    }

    void rowsOfTheSameKindsKeepTheirItems()
    {
        QFETCH(const bool, menuIsOpen);
        ShownRows shown;
        shown.setNewest(threeRows(u"$1.00"_s), closed);
        QCOMPARE(shown.setNewest(threeRows(u"$2.00"_s), menuIsOpen), Change::Texts);
        QCOMPARE(texts(shown).first(), u"$2.00"_s);
    }

    void aButtonMayBecomeALink()
    {
        ShownRows shown;
        shown.setNewest({MenuRow::button(u"Ads"_s, [] {})}, closed);
        QCOMPARE(shown.setNewest({MenuRow::link(u"Ads"_s, QUrl(u"https://ads.example/"_s))}, open), Change::Texts);
    }

    void aLineThatBecomesAButtonNeedsAnotherItem()
    {
        ShownRows shown;
        shown.setNewest({MenuRow::line(u"Ads"_s)}, closed);
        QCOMPARE(shown.setNewest({MenuRow::button(u"Ads"_s, [] {})}, closed), Change::Items);
    }

    void rowsThatComeOrGoWaitUntilTheMenuIsClosed()
    {
        ShownRows shown;
        shown.setNewest(threeRows(u"Today"_s), closed);
        QCOMPARE(shown.setNewest({MenuRow::line(u"Error"_s)}, open), Change::Nothing);
        QCOMPARE(texts(shown), QStringList({u"Today"_s, u""_s, u"Quit"_s}));
        QCOMPARE(shown.update(open), Change::Nothing); // opened again meanwhile
        QCOMPARE(shown.update(closed), Change::Items);
        QCOMPARE(texts(shown), QStringList({u"Error"_s}));
    }

    void rowsThatComeBackWhileTheMenuIsOpenNeedNoWaiting()
    {
        ShownRows shown;
        shown.setNewest(threeRows(u"$1.00"_s), closed);
        shown.setNewest({MenuRow::line(u"Error"_s)}, open);
        QCOMPARE(shown.setNewest(threeRows(u"$2.00"_s), open), Change::Texts);
        QCOMPARE(texts(shown).first(), u"$2.00"_s);
    }
};

QTEST_GUILESS_MAIN(ShownRowsTest)
#include "ShownRowsTest.moc"
