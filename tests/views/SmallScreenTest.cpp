// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "SettingsFixture.h"

#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTemporaryFile>
#include <QWindow>

/// The windows on a screen that they are too tall for, 1920 × 1080 at 200 %, and on the way to one that has room.
class SmallScreenTest : public SettingsFixture {
    Q_OBJECT

public:
    static void initMain()
    {
        static QTemporaryFile screens;
        if (!screens.open())
            qFatal("no file for the screens");
        screens.write(R"({"screens": [
            {"name": "small", "x": 0, "y": 0, "width": 960, "height": 540, "logicalDpi": 96, "dpr": 2},
            {"name": "large", "x": 960, "y": 0, "width": 1200, "height": 1000, "logicalDpi": 96, "dpr": 1}]})");
        screens.flush();
        qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + screens.fileName().toUtf8());
    }

private Q_SLOTS:
    void theScreenIsSmall()
    {
        QVERIFY(screen().height() < 580);
        QVERIFY(screen().width() > 540);
    }

    void settingsFitsTheScreen()
    {
        openWithCredentials();
        QVERIFY(screen().contains(window()->frameGeometry()));
        QVERIFY(window()->height() < 560);
        QCOMPARE(window()->minimumSize(), window()->maximumSize()); // it still cannot be resized
    }

    void settingsScrollsDownAlone()
    {
        openWithCredentials();
        QVERIFY(area()->verticalScrollBar()->isVisible());
        QCOMPARE(area()->horizontalScrollBar()->maximum(), 0);
        QCOMPARE(area()->widget()->height(), 560);
        QCOMPARE(WindowTree::clippedTexts(window()), QStringList());
    }

    void theFooterOfSettingsCanBeReached()
    {
        openWithCredentials();
        const QLabel *const footer = label(u"Refreshes every 10 minutes"_s);
        QVERIFY(!isInSight(footer));
        area()->verticalScrollBar()->setValue(area()->verticalScrollBar()->maximum());
        QVERIFY(isInSight(footer));
    }

    void theTabKeyBringsEachFieldIntoSight()
    {
        openWithCredentials();
        QCOMPARE(QApplication::focusWidget(), tokenField());
        for (int stops = 0; stops < 6; ++stops) {
            QVERIFY(isInSight(QApplication::focusWidget()));
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
    }

    void aFontThatGrowsDoesNotPushSettingsOffTheScreen()
    {
        openWithCredentials();
        const WindowTree::SystemFontSize size(26.0);
        QTRY_COMPARE(label(u"Stale threshold (minutes)"_s)->font().pointSizeF(), 26.0);
        QCoreApplication::processEvents();
        QVERIFY(window()->width() <= screen().width());
        QVERIFY(window()->height() <= screen().height());
        QCOMPARE(WindowTree::clippedTexts(window()), QStringList());
    }

    void theGuideFitsTheScreenAndScrollsToItsLastBox()
    {
        WindowManager::shared().openSetupGuide();
        QWidget *const guide = WindowTree::windows(u"Setup Guide"_s).value(0);
        QVERIFY(QTest::qWaitForWindowActive(guide));
        QVERIFY(screen().contains(guide->frameGeometry()));
        QScrollBar *const bar = guide->findChild<QScrollArea *>()->verticalScrollBar();
        const QWidget *lastBox = nullptr;
        for (const QLabel *label : guide->findChildren<QLabel *>())
            if (label->text() == u"💡 Permanent Token"_s)
                lastBox = label->parentWidget();
        QVERIFY(!isInSight(lastBox));
        bar->setValue(bar->maximum());
        QVERIFY(isInSight(lastBox));
    }

    void settingsFitsEachScreenThatItComesTo()
    {
        openWithCredentials();
        window()->windowHandle()->setScreen(large());
        QTRY_COMPARE(window()->height(), 560);
        QCOMPARE(window()->width(), 500);
        QTRY_VERIFY(!area()->verticalScrollBar()->isVisible());
        window()->windowHandle()->setScreen(small());
        QTRY_VERIFY(window()->height() < screen().height());
        QTRY_VERIFY(area()->verticalScrollBar()->isVisible());
        QCOMPARE(WindowTree::clippedTexts(window()), QStringList());
    }

    void theGuideFitsASmallerScreenThatItComesTo()
    {
        WindowManager::shared().openSetupGuide();
        QWidget *const guide = WindowTree::windows(u"Setup Guide"_s).value(0);
        guide->windowHandle()->setScreen(large());
        QTRY_COMPARE(guide->minimumHeight(), 600);
        guide->resize(700, 900);
        guide->windowHandle()->setScreen(small());
        QTRY_VERIFY(guide->height() < screen().height());
        QCOMPARE(guide->width(), 700);
    }

private:
    static QScreen *small() { return QGuiApplication::screenAt({0, 0}); }
    static QScreen *large() { return QGuiApplication::screenAt({1000, 0}); }
    static QRect screen() { return small()->availableGeometry(); }
    static bool isInSight(const QWidget *widget) { return widget->visibleRegion() == QRegion(widget->rect()); }
    QScrollArea *area() const { return window()->findChild<QScrollArea *>(); }
};

QTEST_MAIN(SmallScreenTest)
#include "SmallScreenTest.moc"
