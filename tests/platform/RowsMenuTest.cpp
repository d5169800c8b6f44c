// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "MenuBar/Linux/Tray/RowsMenu.h"
#include "Contrast.h"

#include <QApplication>
#include <QDesktopServices>
#include <QRegularExpression>
#include <QScreen>
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

/// As a user does it, whose pointer travels there first. Qt 6.8 closes a menu at a press before which the pointer has
/// not moved since the menu opened.
void click(QMenu &menu, int index)
{
    const QPoint middle = menu.actionGeometry(menu.actions()[index]).center();
    for (int distance = 7; distance >= 0; --distance)
        QTest::mouseMove(menu.windowHandle(), middle - QPoint(distance, 0));
    QTest::mouseClick(menu.windowHandle(), Qt::LeftButton, {}, middle);
}

/// The strongest contrast that a pixel of the row makes with the row's ground.
double contrastOfRow(QMenu &menu, int index)
{
    const QImage picture = menu.grab(menu.actionGeometry(menu.actions()[index])).toImage();
    const QColor ground = picture.pixelColor(4, 4); // within the menu's frame, before the text
    double strongest = 1;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            strongest = std::max(strongest, contrast(picture.pixelColor(x, y), ground));
    return strongest;
}

/// Where the row's text has left marks.
QRect inkOfRow(QMenu &menu, int index)
{
    const QImage picture = menu.grab(menu.actionGeometry(menu.actions()[index])).toImage();
    const QColor ground = picture.pixelColor(4, 4);
    QRect ink;
    for (int y = 4; y < picture.height() - 4; ++y) // within the menu's frame
        for (int x = 4; x < picture.width() - 4; ++x)
            if (contrast(picture.pixelColor(x, y), ground) > 1.5)
                ink |= QRect(x, y, 1, 1);
    return ink;
}

} // namespace

class RowsMenuTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        QDesktopServices::unsetUrlHandler(u"https"_s);
        QApplication::setPalette({});
    }

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

    void aTabIsNoShortcut()
    {
        RowsMenu menu;
        menu.setRows({MenuRow::line(u"left\tright"_s),
            MenuRow::line(u"a row that is a good deal wider than the first of the two is"_s)});
        menu.resize(menu.sizeHint());
        const QRect ink = inkOfRow(menu, 0);
        QVERIFY(!ink.isEmpty());
        QVERIFY2(ink.right() < menu.sizeHint().width() / 2, qPrintable(QString::number(ink.right())));
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

    void rowsAreTextAlone()
    {
        RowsMenu menu;
        menu.setRows({MenuRow::line(u"1"_s, MenuRow::Style::Headline), MenuRow::line(u"2"_s),
            MenuRow::line(u"3"_s, MenuRow::Style::Caption), MenuRow::divider(), MenuRow::button(u"🔄 Refresh"_s, [] {}),
            MenuRow::link(u"Ads"_s, QUrl(u"https://adsmanager.example/"_s))});
        const QList<QAction *> actions = menu.actions();
        for (const QAction *action : actions) {
            QVERIFY(action->icon().isNull());
            QVERIFY(action->shortcut().isEmpty());
            QVERIFY(!action->isCheckable());
        }
    }

    void linesAreReadableWhateverThePalette()
    {
        RowsMenu menu;
        QFont large = menu.font(); // whose strokes have pixels of the very colour
        large.setPixelSize(24);
        menu.setFont(large);
        menu.setRows(threeRows(u"HH"_s));
        pop(menu);
        const QPalette light(QColor(0xef, 0xef, 0xef));
        const QPalette dark(QColor(0x35, 0x35, 0x35), QColor(0x2b, 0x2b, 0x2b));
        for (const QPalette &palette : {light, dark, light}) { // one and the same open menu
            QApplication::setPalette(palette);
            const double line = contrastOfRow(menu, 0);
            const double command = contrastOfRow(menu, 2);
            QVERIFY2(line >= 4.5, qPrintable(QString::number(line)));
            QVERIFY2(line < command, qPrintable(u"%1, a command %2"_s.arg(line).arg(command)));
        }
    }

    void theMenuOpensBesideWhatWasClicked_data()
    {
        QTest::addColumn<QPoint>("corner");
        QTest::addColumn<bool>("above");
        QTest::newRow("top left") << QPoint(0, 0) << false;
        QTest::newRow("top right") << QPoint(776, 0) << false;
        QTest::newRow("bottom left") << QPoint(0, 776) << true;
        QTest::newRow("bottom right") << QPoint(776, 776) << true;
    }

    void theMenuOpensBesideWhatWasClicked()
    {
        QFETCH(const QPoint, corner);
        QFETCH(const bool, above);
        const QRect screen = QGuiApplication::primaryScreen()->geometry();
        QCOMPARE(screen.size(), QSize(800, 800));
        const QRect clicked(corner, QSize(24, 24));
        RowsMenu menu;
        menu.setRows(threeRows(u"Today"_s));
        menu.popUpBeside(clicked);
        QVERIFY(screen.contains(menu.geometry()));
        QCOMPARE(above ? menu.geometry().bottom() + 1 : menu.y(), above ? clicked.top() : clicked.bottom() + 1);
        QCOMPARE(corner.x() == 0 ? menu.x() : menu.geometry().right(), corner.x() == 0 ? 0 : screen.right());
    }

    void aCaptionIsSmallerWhereTheMenuFontIsGivenInPixels()
    {
        QTest::failOnWarning(QRegularExpression(u"."_s)); // such as one about a size in points below zero
        RowsMenu menu;
        QFont inPixels = menu.font();
        inPixels.setPixelSize(40);
        menu.setFont(inPixels);
        menu.setRows({MenuRow::line(u"H"_s, MenuRow::Style::Caption), MenuRow::line(u"H"_s)});
        QCOMPARE(menu.actions()[0]->font().pixelSize(), 34);
        QVERIFY(inkOfRow(menu, 0).height() < inkOfRow(menu, 1).height());
    }

    void aClickRunsTheAction()
    {
        int runs = 0;
        RowsMenu menu;
        menu.setRows({MenuRow::line(u"Today"_s), MenuRow::button(u"Refresh"_s, [&] { ++runs; })});
        pop(menu);
        click(menu, 1);
        QCOMPARE(runs, 1);
        QVERIFY(!menu.isVisible());
    }

    void lookingAtTheMenuRunsNothing()
    {
        QDesktopServices::setUrlHandler(u"https"_s, this, "openedUrl");
        m_opened.clear();
        int runs = 0;
        RowsMenu menu;
        menu.setRows({MenuRow::line(u"Today"_s), MenuRow::button(u"🔄 Refresh"_s, [&] { ++runs; }),
            MenuRow::link(u"Ads"_s, QUrl(u"https://adsmanager.example/"_s))});
        pop(menu);
        QTest::keyClick(&menu, Qt::Key_Down);
        QTest::keyClick(&menu, Qt::Key_Down);
        QTest::keyClick(&menu, Qt::Key_Escape);
        QVERIFY(!menu.isVisible());
        QCoreApplication::processEvents();
        QCOMPARE(runs, 0);
        QCOMPARE(m_opened, QList<QUrl>());
    }

    void aClickOnALineDoesNothing()
    {
        RowsMenu menu;
        menu.setRows(threeRows(u"Today"_s));
        pop(menu);
        click(menu, 0);
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
        click(menu, 1);
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
