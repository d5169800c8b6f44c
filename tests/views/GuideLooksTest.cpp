// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Controls/Boxes/Divider.h"
#include "PaintedPixels.h"
#include "SettingsFixture.h"

#include <QScrollArea>

/// How the windows look, measured in what they paint, on a light and on a dark desktop.
class LooksTest : public SettingsFixture {
    Q_OBJECT

private Q_SLOTS:
    void dividersAreThereAndWeakerThanAnyText_data() { palettes(); }
    void dividersAreThereAndWeakerThanAnyText()
    {
        QFETCH(const QPalette, palette);
        const WindowTree::SystemPalette system(palette);
        const QColor ground = QApplication::palette().color(QPalette::Window);
        const double divider = PaintedPixels::strongest(onThePage(guide()->findChild<Divider *>()), ground);
        const double text = PaintedPixels::strongest(onThePage(guideLabel(u"Copy the token"_s)), ground);
        QVERIFY2(divider > 1.2, qPrintable(QString::number(divider)));
        QVERIFY2(divider < text / 3, qPrintable(u"%1, text %2"_s.arg(divider).arg(text)));
    }

    void theBoxesOfSettingsAreVisibleAndBeginWhereTheTextsDo_data() { palettes(); }
    void theBoxesOfSettingsAreVisibleAndBeginWhereTheTextsDo()
    {
        QFETCH(const QPalette, palette);
        const WindowTree::SystemPalette system(palette);
        open();
        const QColor ground = QApplication::palette().color(QPalette::Window);
        for (const QString &title : {u"API Credentials"_s, u"Preferences"_s}) {
            const QWidget *const box = WindowTree::find(window(), QAccessible::Grouping, title);
            // A line through the box below its title, from the window's edge.
            const int y = box->mapTo(window(), QPoint(0, box->height() - 12)).y();
            const QImage across = window()->grab(QRect(0, y, window()->width(), 1)).toImage();
            const QRect stroke = PaintedPixels::ink(across, ground, 1.25);
            QCOMPARE(stroke.left(), 24);
            QCOMPARE(stroke.right(), window()->width() - 24 - 1);
        }
    }

    void bothBoxesOfTheGuideBeginWithAnEmojiInColour()
    {
        for (const QString &title : {u"⚠️ Short-Lived Token"_s, u"💡 Permanent Token"_s}) {
            QImage picture = onThePage(guideLabel(title));
            QVERIFY2(PaintedPixels::isColourful(picture.copy(0, 0, 20, picture.height())), qPrintable(title));
        }
    }

    void linesOfAStepBeginWhereItsTitleDoes_data()
    {
        QTest::addColumn<double>("points");
        for (const double points : {7.0, 9.0, 10.0, 11.0, 13.0, 16.0, 20.0, 26.0})
            QTest::addRow("%g points", points) << points;
    }

    void linesOfAStepBeginWhereItsTitleDoes()
    {
        QFETCH(const double, points);
        guide(); // the font changes while it is open
        const WindowTree::SystemFontSize size(points);
        QTRY_COMPARE(guideLabel(u"Copy the token"_s)->font().pointSizeF(), points);
        QCoreApplication::processEvents();
        // An S, a C and a G begin alike; the strokes of a bold one a little further to the right in a large font.
        const double tolerance = 1.0 + points / 20.0;
        const int title = textEdge(guideLabel(u"Step 2: Generate an Access Token"_s));
        for (const QString &line : {u"Select your app from the dropdown"_s, u"Copy the token"_s})
            QVERIFY2(std::abs(textEdge(guideLabel(line)) - title) <= tolerance,
                qPrintable(u"%1, the title %2"_s.arg(textEdge(guideLabel(line))).arg(title)));
        const QWidget *const link = WindowTree::find(guide(), QAccessible::Link, u"Graph API Explorer"_s);
        const QLabel *const above = guideLabel(u"Go to the Graph API Explorer"_s);
        QCOMPARE(
            link->mapTo(guide(), QPoint()).x(), above->mapTo(guide(), QPoint()).x() + above->contentsRect().left());
    }

    void theWheelIsAsStrongAsItsTextAndKeepsItsDistance_data() { palettes(); }
    void theWheelIsAsStrongAsItsTextAndKeepsItsDistance()
    {
        QFETCH(const QPalette, palette);
        const WindowTree::SystemPalette system(palette);
        openWithCredentials();
        m_service->answerAll(LoopbackService::Reply::silence());
        QTest::mouseClick(testButton(), Qt::LeftButton);
        const QImage button = PaintedPixels::of(window(), testButton());
        const QRect inside = button.rect().adjusted(8, 4, -8, -4);
        const QColor ground = button.pixelColor(inside.topLeft());
        // The widest gap between columns with marks parts the wheel from the text.
        const auto [gapStart, gapEnd] = widestGap(button.copy(inside), ground);
        QVERIFY2(gapEnd - gapStart >= 6, qPrintable(QString::number(gapEnd - gapStart)));
        const QImage all = button.copy(inside);
        const double wheel = PaintedPixels::strongest(all.copy(0, 0, gapStart, all.height()), ground);
        const double text = PaintedPixels::strongest(all.copy(gapEnd, 0, all.width() - gapEnd, all.height()), ground);
        QVERIFY2(wheel <= text * 1.15 && wheel > 1.3, qPrintable(u"%1, text %2"_s.arg(wheel).arg(text)));
    }

private:
    static void palettes()
    {
        QTest::addColumn<QPalette>("palette");
        QTest::newRow("light") << QPalette(QColor(0xef, 0xef, 0xef));
        QTest::newRow("dark") << WindowTree::darkPalette();
    }

    static QWidget *guide()
    {
        if (WindowTree::windows(u"Setup Guide"_s).isEmpty())
            WindowManager::shared().openSetupGuide();
        return WindowTree::windows(u"Setup Guide"_s).value(0);
    }

    static QLabel *guideLabel(const QString &text)
    {
        const auto labels = guide()->findChildren<QLabel *>();
        for (QLabel *label : labels)
            if (label->text() == text)
                return label;
        return nullptr;
    }

    /// The widget's picture on the guide's page, scrolled to or not.
    static QImage onThePage(const QWidget *widget)
    {
        return PaintedPixels::of(guide()->findChild<QScrollArea *>()->widget(), widget);
    }

    /// Where the text behind the label's mark begins to be painted, on the page.
    static int textEdge(const QLabel *label)
    {
        const QImage picture = onThePage(label);
        const QColor ground = picture.pixelColor(picture.width() - 1, 0);
        const int left = label->contentsRect().left() - 2;
        const QRect ink =
            PaintedPixels::ink(picture.copy(left, 0, picture.width() - left, picture.height()), ground, 2.0);
        return label->mapTo(guide(), QPoint(left + ink.left(), 0)).x();
    }

    static std::pair<int, int> widestGap(const QImage &picture, const QColor &ground)
    {
        std::pair<int, int> widest(0, 0);
        int start = -1;
        for (int x = 0; x < picture.width(); ++x) {
            if (PaintedPixels::ink(picture.copy(x, 0, 1, picture.height()), ground, 1.15).isEmpty())
                continue;
            if (start >= 0 && x - start > widest.second - widest.first)
                widest = {start, x};
            start = x + 1;
        }
        return widest;
    }
};

QTEST_MAIN(LooksTest)
#include "LooksTest.moc"
