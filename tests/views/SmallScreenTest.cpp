// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "SettingsFixture.h"

#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>

/// The windows on a screen that they are too tall for, as with 1920 × 1080 at 200 %.
class SmallScreenTest : public SettingsFixture {
    Q_OBJECT

public:
    static void initMain() { qputenv("QT_SCALE_FACTOR", "1.4"); } // the platform's screen has 800 × 800 pixels

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

private:
    static QRect screen() { return QGuiApplication::primaryScreen()->availableGeometry(); }
    static bool isInSight(const QWidget *widget) { return widget->visibleRegion() == QRegion(widget->rect()); }
    QScrollArea *area() const { return window()->findChild<QScrollArea *>(); }
};

QTEST_MAIN(SmallScreenTest)
#include "SmallScreenTest.moc"
