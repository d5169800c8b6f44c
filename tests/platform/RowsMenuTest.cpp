// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Platform/Linux/RowsMenu.h"

#include <QDesktopServices>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QStringList texts(const QMenu &menu)
{
    QStringList texts;
    for (const QAction *action : menu.actions())
        texts << (action->isSeparator() ? u"-"_s : action->text());
    return texts;
}

MenuRows threeRows(const QString &line)
{
    return {MenuRow::line(line), MenuRow::divider(), MenuRow::button(u"Quit"_s, [] {})};
}

void pop(QMenu &menu)
{
    menu.popup({10, 10});
    QVERIFY(QTest::qWaitForWindowExposed(&menu));
}

} // namespace

class RowsMenuTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { QDesktopServices::unsetUrlHandler(u"https"_s); }

    void rowsBecomeActionsInOrder()
    {
        RowsMenu menu;
        menu.setRows(threeRows(u"Today"_s));
        QCOMPARE(texts(menu), QStringList({u"Today"_s, u"-"_s, u"Quit"_s}));
        QVERIFY(!menu.actions()[0]->isEnabled());
        QVERIFY(menu.actions()[2]->isEnabled());
    }

    void ampersandsAreNoAccessKeys()
    {
        RowsMenu menu;
        menu.setRows({MenuRow::line(u"R&D && _x_"_s)});
        QCOMPARE(texts(menu), QStringList({u"R&&D &&&& _x_"_s}));
    }

    void headlinesAreBoldAndCaptionsSmall()
    {
        RowsMenu menu;
        menu.setRows({MenuRow::line(u"1"_s), MenuRow::line(u"2"_s, MenuRow::Style::Headline),
            MenuRow::line(u"3"_s, MenuRow::Style::Caption)});
        const QList<QAction *> actions = menu.actions();
        QVERIFY(!actions[0]->font().bold());
        QVERIFY(actions[1]->font().bold());
        QVERIFY(!actions[2]->font().bold());
        QVERIFY(actions[2]->font().pointSizeF() < actions[0]->font().pointSizeF());
    }

    void aMenuFontInPixelsKeepsItsSize()
    {
        QTest::failOnWarning(QRegularExpression(u"."_s)); // such as one about a size in points below zero
        RowsMenu menu;
        QFont inPixels = menu.font();
        inPixels.setPixelSize(15);
        menu.setFont(inPixels);
        menu.setRows({MenuRow::line(u"1"_s, MenuRow::Style::Caption)});
        QCOMPARE(menu.actions().constFirst()->font().pixelSize(), 15);
    }

    void aClickRunsTheAction()
    {
        int runs = 0;
        RowsMenu menu;
        menu.setRows({MenuRow::line(u"Today"_s), MenuRow::button(u"Refresh"_s, [&] { ++runs; })});
        pop(menu);
        QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(menu.actions()[1]).center());
        QCOMPARE(runs, 1);
        QVERIFY(!menu.isVisible());
    }

    void aClickOnALineDoesNothing()
    {
        RowsMenu menu;
        menu.setRows(threeRows(u"Today"_s));
        pop(menu);
        QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(menu.actions()[0]).center());
        QVERIFY(menu.isVisible());
    }

    void aLinkOpensItsDestination()
    {
        QDesktopServices::setUrlHandler(u"https"_s, this, "openedUrl");
        RowsMenu menu;
        menu.setRows({MenuRow::link(u"Ads"_s, QUrl(u"https://adsmanager.example/"_s))});
        menu.actions()[0]->trigger();
        QCOMPARE(m_opened, QList<QUrl>({QUrl(u"https://adsmanager.example/"_s)}));
    }

    void textsChangeInPlaceWhileTheMenuIsOpen()
    {
        RowsMenu menu;
        menu.setRows(threeRows(u"$1.00"_s));
        pop(menu);
        const QList<QAction *> before = menu.actions();
        menu.setRows(threeRows(u"$2.00"_s));
        QCOMPARE(texts(menu), QStringList({u"$2.00"_s, u"-"_s, u"Quit"_s}));
        QCOMPARE(menu.actions(), before);
        QVERIFY(menu.isVisible());
    }

    void theNewestActionRunsBehindAnUnchangedText()
    {
        QStringList runs;
        RowsMenu menu;
        menu.setRows({MenuRow::button(u"Refresh"_s, [&] { runs << u"old"_s; })});
        menu.setRows({MenuRow::button(u"Refresh"_s, [&] { runs << u"new"_s; })});
        menu.actions()[0]->trigger();
        QCOMPARE(runs, QStringList({u"new"_s}));
    }

    void rowsThatComeOrGoWaitUntilTheMenuCloses()
    {
        RowsMenu menu;
        menu.setRows(threeRows(u"Today"_s));
        pop(menu);
        menu.setRows({MenuRow::button(u"Settings"_s, [] {}), MenuRow::button(u"Quit"_s, [] {})});
        QCOMPARE(texts(menu), QStringList({u"Today"_s, u"-"_s, u"Quit"_s}));
        menu.close();
        QTRY_COMPARE(texts(menu), QStringList({u"Settings"_s, u"Quit"_s}));
    }

    void theChosenRowRunsThoughOthersWait()
    {
        QStringList runs;
        RowsMenu menu;
        menu.setRows({MenuRow::line(u"Today"_s), MenuRow::button(u"Refresh"_s, [&] { runs << u"refresh"_s; })});
        pop(menu);
        menu.setRows({MenuRow::button(u"Settings"_s, [&] { runs << u"settings"_s; }),
            MenuRow::button(u"Quit"_s, [&] { runs << u"quit"_s; })});
        QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(menu.actions()[1]).center());
        QCOMPARE(runs, QStringList({u"refresh"_s}));
        QTRY_COMPARE(texts(menu), QStringList({u"Settings"_s, u"Quit"_s}));
    }

    void anActionMayChangeTheRows()
    {
        RowsMenu menu;
        menu.setRows({MenuRow::button(u"1"_s, [&] { menu.setRows({MenuRow::line(u"2"_s), MenuRow::divider()}); })});
        menu.actions()[0]->trigger();
        QTRY_COMPARE(texts(menu), QStringList({u"2"_s, u"-"_s}));
    }

    Q_INVOKABLE void openedUrl(const QUrl &url) { m_opened << url; }

private:
    QList<QUrl> m_opened;
};

QTEST_MAIN(RowsMenuTest)
#include "RowsMenuTest.moc"
