// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Controls/Windows/Alert.h"
#include "Foundation/Task.h"
#include "Http/HttpSession.h"
#include "Json.h"
#include "LoopbackService.h"
#include "State/AppState.h"
#include "TestPreferences.h"
#include "Views/MenuBarView.h"
#include "Views/WindowManager.h"
#include "WindowTree.h"

#include <QCoroTask>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;
using Reply = LoopbackService::Reply;

/// What the menu's rows bring up.
class MenuCommandsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void aRowOpensItsWindow_data();
    void aRowOpensItsWindow();
    void aTestInSettingsRenewsTheMenusFigures();
    void checkForUpdatesTellsWhatCameOfIt();
    void checkForUpdatesMindsNothingThatIsUnderWay();

private:
    void choose(const QString &text) const;
    void giveCredentials() const;

    std::unique_ptr<TestPreferences> m_preferences;
    std::unique_ptr<LoopbackService> m_service;
    std::shared_ptr<AppState> m_state;
};

void MenuCommandsTest::init()
{
    m_preferences = std::make_unique<TestPreferences>();
    m_service = std::make_unique<LoopbackService>();
    m_state = AppState::create();
    QCoreApplication::processEvents();
    QTRY_COMPARE(Task::running(), 0);
}

void MenuCommandsTest::cleanup()
{
    WindowManager::shared().closeAll();
    HttpSession::shared().cancelAll();
    Alert::dismissAll();
    QTRY_COMPARE(Task::running(), 0);
    m_state.reset();
    m_service.reset();
    m_preferences.reset();
}

void MenuCommandsTest::choose(const QString &text) const
{
    const MenuRows body = MenuBarView(m_state).body();
    const auto row = std::ranges::find(body, text, &MenuRow::text);
    QVERIFY2(row != body.end(), qPrintable(text));
    row->action();
}

void MenuCommandsTest::giveCredentials() const
{
    m_state->setAccessToken(u"T"_s);
    m_state->setAdAccountId(u"1"_s);
}

void MenuCommandsTest::aRowOpensItsWindow_data()
{
    QTest::addColumn<QString>("accountId");
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("row");
    QTest::addColumn<QString>("title");
    const QString settings = u"Vantelo Settings"_s;
    QTest::newRow("without credentials") << u""_s << ""_ba << u"Open Settings…"_s << settings;
    QTest::newRow("the guide") << u""_s << ""_ba << u"Setup Guide…"_s << u"Setup Guide"_s;
    QTest::newRow("after an error") << u"1"_s << json("{'error': {}}") << u"Open Settings…"_s << settings;
    QTest::newRow("with figures") << u"1"_s << "{}"_ba << u"Settings…"_s << settings;
}

void MenuCommandsTest::aRowOpensItsWindow()
{
    QFETCH(const QString, accountId);
    QFETCH(const QByteArray, body);
    QFETCH(const QString, row);
    QFETCH(const QString, title);
    m_state->setAccessToken(u"T"_s);
    m_state->setAdAccountId(accountId);
    m_service->answerAll(Reply::whole(body));
    QCoro::waitFor(m_state->refresh());
    choose(row);
    const QWidgetList windows = WindowTree::windows(title);
    QCOMPARE(windows.size(), 1);
    QVERIFY(QTest::qWaitForWindowActive(windows.constFirst()));
}

void MenuCommandsTest::aTestInSettingsRenewsTheMenusFigures()
{
    giveCredentials();
    m_service->answerAll(Reply::whole("{}"));
    QCoro::waitFor(m_state->refresh());
    choose(u"Settings…"_s);
    m_service->answerAll(Reply::whole(json("{'data': [{'impressions': '7'}]}")));
    QWidget *const settings = WindowTree::windows(u"Vantelo Settings"_s).constFirst();
    QTest::mouseClick(WindowTree::find(settings, QAccessible::Button, u"Test Connection"_s), Qt::LeftButton);
    QTRY_COMPARE(m_state->menuBarText(), u"7"_s);
}

void MenuCommandsTest::checkForUpdatesMindsNothingThatIsUnderWay()
{
    giveCredentials();
    m_service->answerAll(Reply::whole("{}"));
    QCoro::waitFor(m_state->refresh());
    const qsizetype checks = m_service->requestsWith("version.json");
    m_service->answerAll(Reply::silence());
    choose(u"🔄 Refresh"_s);
    choose(u"Check for Updates…"_s);
    choose(u"Check for Updates…"_s);
    QTRY_COMPARE(m_service->requestsWith("version.json"), checks + 2);
}

void MenuCommandsTest::checkForUpdatesTellsWhatCameOfIt()
{
    giveCredentials();
    m_service->answerAll(Reply::whole(json("{'version': '0.0.0', 'download_url': 'x'}")));
    QCoro::waitFor(m_state->refresh());
    choose(u"Check for Updates…"_s);
    QTRY_VERIFY(QApplication::activeModalWidget());
    QCOMPARE(QApplication::activeModalWidget()->accessibleName(), u"You're Up to Date"_s);
}

QTEST_MAIN(MenuCommandsTest)
#include "MenuCommandsTest.moc"
