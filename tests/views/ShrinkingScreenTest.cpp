// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Helpers.h"
#include "Pictures.h"
#include "State/AppState.h"
#include "TestDisplay.h"
#include "TestPreferences.h"
#include "Views/WindowManager.h"
#include "WindowTree.h"

#include <QProcess>
#include <QScreen>
#include <QTest>

using namespace Qt::StringLiterals;

/// The windows on a screen whose free area changes while they are open, as panels and resolutions come and go.
class ShrinkingScreenTest : public QObject {
    Q_OBJECT

public:
    static void initMain()
    {
        requirePrograms({u"Xvfb"_s, u"xprop"_s});
        static const TestDisplay display;
    }

private Q_SLOTS:
    void init()
    {
        leaveFree({0, 0, 800, 590});
        m_preferences = std::make_unique<TestPreferences>();
        m_state = AppState::create();
    }

    void cleanup()
    {
        Pictures::keepIfFailed();
        WindowManager::shared().closeAll();
    }

    void anOpenWindowFitsWhatIsLeft_data()
    {
        QTest::addColumn<QString>("title");
        QTest::newRow("Settings") << u"Vantelo Settings"_s;
        QTest::newRow("Setup Guide") << u"Setup Guide"_s;
    }

    void anOpenWindowFitsWhatIsLeft()
    {
        QFETCH(const QString, title);
        if (title == u"Setup Guide"_s)
            WindowManager::shared().openSetupGuide();
        else
            WindowManager::shared().openSettings(m_state);
        QWidget *const window = WindowTree::windows(title).value(0);
        QVERIFY(QTest::qWaitForWindowExposed(window));
        QCOMPARE(window->height(), 546); // less the frame, which nobody has drawn here
        QCOMPARE(window->y(), 0);        // so that one that comes on top does not push the window's end off
        leaveFree({100, 50, 650, 400});
        QTRY_COMPARE(window->height(), 356);
        QTRY_VERIFY(QRect(100, 50, 650, 400).contains(window->frameGeometry()));
        QCOMPARE(WindowTree::clippedTexts(window), QStringList());
        leaveFree({0, 0, 800, 590});
        QTRY_COMPARE(window->height(), 546);
    }

private:
    /// As a window manager tells of it.
    static void leaveFree(const QRect &area)
    {
        QProcess xprop;
        xprop.start(u"xprop"_s, {u"-root"_s, u"-f"_s, u"_NET_WORKAREA"_s, u"32c"_s, u"-set"_s, u"_NET_WORKAREA"_s,
                                    u"%1,%2,%3,%4"_s.arg(area.x()).arg(area.y()).arg(area.width()).arg(area.height())});
        QVERIFY(xprop.waitForFinished());
        QTRY_COMPARE(QGuiApplication::primaryScreen()->availableGeometry(), area);
    }

    std::unique_ptr<TestPreferences> m_preferences;
    std::shared_ptr<AppState> m_state;
};

QTEST_MAIN(ShrinkingScreenTest)
#include "ShrinkingScreenTest.moc"
