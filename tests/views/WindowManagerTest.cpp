// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Views/WindowManager.h"

#include "Foundation/Task.h"
#include "State/AppState.h"
#include "TestPreferences.h"
#include "WindowTree.h"

#include <QLineEdit>
#include <QPointer>
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

class WindowManagerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void thereIsNoWindowBeforeOneIsAskedFor();
    void theWindowsHaveTheirTitles_data() { kinds(); }
    void theWindowsHaveTheirTitles();
    void theWindowsBearTheInstalledIcon_data() { kinds(); }
    void theWindowsBearTheInstalledIcon();
    void theSettingsWindowFitsItsFormAndCannotBeResized();
    void theGuideOpensAtItsSizeAndCanBeResized();
    void theTitleBarsOfferWhatTheWindowsCanDo();
    void askingTwiceLeavesOneWindow_data() { kinds(); }
    void askingTwiceLeavesOneWindow();
    void aVisibleWindowIsBroughtToTheFrontUnchanged();
    void aClosedWindowIsReplacedByANewOneInTheCentre_data() { kinds(); }
    void aClosedWindowIsReplacedByANewOneInTheCentre();
    void aClosedSettingsWindowIsReloadedFromThePreferences();
    void aMinimisedWindowIsReplacedAndClosed_data() { kinds(); }
    void aMinimisedWindowIsReplacedAndClosed();
    void aHiddenWindowIsReplaced_data() { kinds(); }
    void aHiddenWindowIsReplaced();
    void bothWindowsMayBeOpenAtOnce();
    void eachOperationTouchesItsOwnWindowOnly();
    void theKeyboardClosesAWindow_data();
    void theKeyboardClosesAWindow();
    void closingAllWindowsLeavesNone();

private:
    static void kinds();
    void open(const QString &title);
    static QWidget *window(const QString &title) { return WindowTree::windows(title).value(0); }
    static QPoint centre(const QWidget *window) { return window->geometry().center(); }
    static bool isCentred(const QWidget *window);

    std::unique_ptr<TestPreferences> m_preferences;
    std::shared_ptr<AppState> m_state;
};

void WindowManagerTest::init()
{
    m_preferences = std::make_unique<TestPreferences>();
    m_state = AppState::create();
}

void WindowManagerTest::cleanup()
{
    WindowManager::shared().closeAll();
    QCoreApplication::processEvents();
    QTRY_COMPARE(Task::running(), 0);
    m_state.reset();
}

void WindowManagerTest::kinds()
{
    QTest::addColumn<QString>("title");
    QTest::newRow("Settings") << u"Vantelo Settings"_s;
    QTest::newRow("Setup Guide") << u"Setup Guide"_s;
}

void WindowManagerTest::open(const QString &title)
{
    if (title == u"Setup Guide"_s)
        WindowManager::shared().openSetupGuide();
    else
        WindowManager::shared().openSettings(m_state);
}

bool WindowManagerTest::isCentred(const QWidget *window)
{
    const QPoint offset = centre(window) - QGuiApplication::primaryScreen()->availableGeometry().center();
    return offset.manhattanLength() <= 4; // the frame's width, unknown before the window is shown
}

void WindowManagerTest::thereIsNoWindowBeforeOneIsAskedFor() { QCOMPARE(QApplication::topLevelWidgets().size(), 0); }

void WindowManagerTest::theWindowsHaveTheirTitles()
{
    QFETCH(const QString, title);
    open(title);
    QVERIFY(QTest::qWaitForWindowActive(window(title)));
    QVERIFY(window(title)->isActiveWindow());
    QVERIFY(isCentred(window(title)));
}

void WindowManagerTest::theWindowsBearTheInstalledIcon()
{
    QFETCH(const QString, title);
    const QTemporaryDir icons;
    QImage drawing(16, 16, QImage::Format_ARGB32);
    drawing.fill(Qt::magenta);
    QVERIFY(drawing.save(icons.filePath(u"app.vantelo.Vantelo.png"_s)));
    QIcon::setThemeName(u"hicolor"_s);
    QIcon::setFallbackSearchPaths({icons.path()});
    QGuiApplication::setDesktopFileName(u"app.vantelo.Vantelo"_s);
    open(title);
    QCOMPARE(window(title)->windowIcon().pixmap(16).toImage().pixelColor(8, 8), QColor(Qt::magenta));
}

void WindowManagerTest::theSettingsWindowFitsItsFormAndCannotBeResized()
{
    open(u"Vantelo Settings"_s);
    QWidget *const settings = window(u"Vantelo Settings"_s);
    QCOMPARE(settings->size(), QSize(500, 560));
    QCOMPARE(settings->minimumSize(), settings->size());
    QCOMPARE(settings->maximumSize(), settings->size());
    settings->resize(900, 900);
    QCOMPARE(settings->size(), QSize(500, 560));
}

void WindowManagerTest::theGuideOpensAtItsSizeAndCanBeResized()
{
    open(u"Setup Guide"_s);
    QWidget *const guide = window(u"Setup Guide"_s);
    QCOMPARE(guide->size(), QSize(600, 700));
    QCOMPARE(guide->minimumSize(), QSize(550, 600));
    guide->resize(200, 200);
    QCOMPARE(guide->size(), QSize(550, 600));
    guide->resize(900, 950);
    QCOMPARE(guide->size(), QSize(900, 950));
}

void WindowManagerTest::theTitleBarsOfferWhatTheWindowsCanDo()
{
    open(u"Vantelo Settings"_s);
    open(u"Setup Guide"_s);
    const Qt::WindowFlags common = Qt::WindowTitleHint | Qt::WindowCloseButtonHint | Qt::WindowMinimizeButtonHint;
    const Qt::WindowFlags settings = window(u"Vantelo Settings"_s)->windowFlags();
    const Qt::WindowFlags guide = window(u"Setup Guide"_s)->windowFlags();
    QVERIFY(settings.testFlags(common));
    QVERIFY(!settings.testFlag(Qt::WindowMaximizeButtonHint));
    QVERIFY(guide.testFlags(common | Qt::WindowMaximizeButtonHint));
}

void WindowManagerTest::askingTwiceLeavesOneWindow()
{
    QFETCH(const QString, title);
    open(title);
    const QPointer<QWidget> first = window(title);
    open(title);
    QCoreApplication::processEvents();
    QCOMPARE(WindowTree::windows(title), QWidgetList{first});
}

void WindowManagerTest::aVisibleWindowIsBroughtToTheFrontUnchanged()
{
    open(u"Setup Guide"_s);
    QWidget *const guide = window(u"Setup Guide"_s);
    guide->setGeometry(30, 40, 700, 800);
    open(u"Vantelo Settings"_s);
    QVERIFY(QTest::qWaitForWindowActive(window(u"Vantelo Settings"_s)));
    open(u"Setup Guide"_s);
    QVERIFY(QTest::qWaitForWindowActive(guide));
    QCOMPARE(guide->geometry(), QRect(30, 40, 700, 800));
}

void WindowManagerTest::aClosedWindowIsReplacedByANewOneInTheCentre()
{
    QFETCH(const QString, title);
    open(title);
    const QPointer<QWidget> first = window(title);
    first->move(1, 1);
    QVERIFY(!isCentred(first));
    first->close();
    open(title);
    QCOMPARE(WindowTree::windows(title).size(), 1);
    QVERIFY(window(title) != first);
    QVERIFY(isCentred(window(title)));
    QTRY_VERIFY(!first);
}

void WindowManagerTest::aClosedSettingsWindowIsReloadedFromThePreferences()
{
    open(u"Vantelo Settings"_s);
    const auto accountId = [] {
        return qobject_cast<QLineEdit *>(
            WindowTree::find(window(u"Vantelo Settings"_s), QAccessible::EditableText, u"Ad Account ID"_s));
    };
    m_preferences->write(u"adAccountId"_s, u"act_9"_s);
    open(u"Vantelo Settings"_s); // still the same window
    QCOMPARE(accountId()->text(), QString());
    window(u"Vantelo Settings"_s)->close();
    open(u"Vantelo Settings"_s);
    QCOMPARE(accountId()->text(), u"act_9"_s);
}

void WindowManagerTest::aMinimisedWindowIsReplacedAndClosed()
{
    QFETCH(const QString, title);
    open(title);
    const QPointer<QWidget> first = window(title);
    first->showMinimized();
    open(title);
    QTRY_VERIFY(!first);
    QCOMPARE(WindowTree::windows(title).size(), 1);
    QVERIFY(!window(title)->isMinimized());
}

void WindowManagerTest::aHiddenWindowIsReplaced()
{
    QFETCH(const QString, title);
    open(title);
    const QPointer<QWidget> first = window(title);
    first->hide();
    open(title);
    QTRY_VERIFY(!first);
    QCOMPARE(WindowTree::windows(title).size(), 1);
}

void WindowManagerTest::bothWindowsMayBeOpenAtOnce()
{
    open(u"Vantelo Settings"_s);
    open(u"Setup Guide"_s);
    QVERIFY(window(u"Vantelo Settings"_s));
    QVERIFY(window(u"Setup Guide"_s));
}

void WindowManagerTest::eachOperationTouchesItsOwnWindowOnly()
{
    open(u"Vantelo Settings"_s);
    open(u"Setup Guide"_s);
    const QPointer<QWidget> settings = window(u"Vantelo Settings"_s);
    window(u"Setup Guide"_s)->close();
    open(u"Setup Guide"_s);
    QCoreApplication::processEvents();
    QCOMPARE(window(u"Vantelo Settings"_s), settings);
}

void WindowManagerTest::theKeyboardClosesAWindow_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<QKeySequence>("keys");
    for (const QString &title : {u"Vantelo Settings"_s, u"Setup Guide"_s}) {
        QTest::addRow("%s by Escape", qPrintable(title)) << title << QKeySequence(Qt::Key_Escape);
        QTest::addRow("%s by Ctrl+W", qPrintable(title)) << title << QKeySequence(Qt::CTRL | Qt::Key_W);
    }
}

void WindowManagerTest::theKeyboardClosesAWindow()
{
    QFETCH(const QString, title);
    QFETCH(const QKeySequence, keys);
    open(u"Vantelo Settings"_s);
    open(u"Setup Guide"_s);
    open(title);
    QVERIFY(QTest::qWaitForWindowActive(window(title)));
    // Wherever the focus is: no control may keep the keys to itself.
    for (int stops = 0; stops < 3; ++stops)
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QTest::keySequence(QApplication::focusWidget(), keys);
    QVERIFY(!window(title));
    QCOMPARE(WindowTree::windows(u"Vantelo Settings"_s).size() + WindowTree::windows(u"Setup Guide"_s).size(), 1);
}

void WindowManagerTest::closingAllWindowsLeavesNone()
{
    open(u"Vantelo Settings"_s);
    open(u"Setup Guide"_s);
    WindowManager::shared().closeAll();
    QCOMPARE(QApplication::topLevelWidgets().size(), 0);
    open(u"Setup Guide"_s);
    QVERIFY(window(u"Setup Guide"_s));
}

QTEST_MAIN(WindowManagerTest)
#include "WindowManagerTest.moc"
