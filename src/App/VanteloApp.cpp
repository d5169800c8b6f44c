// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "App/VanteloApp.h"

#include "Controls/Windows/Alert.h"
#include "Foundation/Deployment.h"
#include "Foundation/Task.h"
#include "Http/HttpSession.h"
#include "Process/Activation.h"
#include "Process/SingleInstance.h"
#include "Process/TerminationSignals.h"
#include "State/AppState.h"
#include "Views/MenuBarView.h"
#include "Views/WindowManager.h"

#include <QApplication>
#include <QThreadPool>
#include <QWindow>

#include <algorithm>
#include <cstdlib>

using namespace Qt::StringLiterals;

int VanteloApp::main(int argc, char **argv)
{
    TerminationSignals::hold(); // first, so that a signal during the start-up ends the program in order, too
    const QApplication application(argc, argv);
    QApplication::setApplicationName(Deployment::domain());
    QApplication::setApplicationVersion(QStringLiteral(VANTELO_VERSION));
    QApplication::setDesktopFileName(u"app.vantelo.Vantelo"_s);
    QApplication::setQuitOnLastWindowClosed(false);
    // Plasma 6 gives the program a plug-in whose jobs hold locks on the event loop: with the last one, Qt would quit.
    QApplication::setQuitLockEnabled(false);

    const auto instance = SingleInstance::claim();
    if (!instance)
        return 0;
    VanteloApp app(MenuBarExtra::create());
    instance->onActivation([&app] { app.openSettings(); });
    TerminationSignals::onReceived([&app] { app.quit(); });
    const int code = QApplication::exec();
    // A large body takes a second to decode. Nobody waits for its figures any more, and all else is stored.
    if (QThreadPool::globalInstance()->activeThreadCount() > 0)
        std::_Exit(code);
    return code;
}

VanteloApp::VanteloApp(std::unique_ptr<MenuBarExtra> menuBarExtra)
    : m_appState(AppState::create()), m_menuBarExtra(std::move(menuBarExtra))
{
    // The texts are English, also where a plug-in of the desktop translates Qt's own into Arabic or Hebrew.
    QApplication::setLayoutDirection(Qt::LeftToRight);
    connect(m_appState.get(), &AppState::objectWillChange, this, &VanteloApp::redrawSoon);
    // Queued: a window may close to make way for another.
    connect(
        qApp, &QGuiApplication::lastWindowClosed, this, &VanteloApp::giveFocusBackOnceWindowless, Qt::QueuedConnection);
    redraw();
}

VanteloApp::~VanteloApp()
{
    m_menuBarExtra.reset(); // nobody watches the rest
    WindowManager::shared().closeAll();
    // Tasks run out rather than being dropped, so that nothing they hold is leaked.
    while (true) {
        HttpSession::shared().cancelAll();
        Alert::dismissAll();
        if (Task::running() == 0)
            break;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents); // a decode is on its thread
    }
}

MenuBarLabel VanteloApp::label(const AppState &appState)
{
    const QString text = appState.menuBarText();
    const auto labelled = [&](StatusDot dot, const QString &description) {
        return MenuBarLabel{.dot = dot, .text = text, .accessibleDescription = description};
    };
    return appState.status().match(
        [&](const MonitorStatus::Error &) {
            return labelled(StatusDot::White, u"The ad account could not be read."_s);
        },
        [&](MonitorStatus::Ok) {
            return labelled(StatusDot::Green, u"The ad account is delivering: %1 impressions today."_s.arg(text));
        },
        [&](MonitorStatus::Stale) {
            return labelled(
                StatusDot::Red, u"The ad account has stopped delivering: %1 impressions today."_s.arg(text));
        },
        [&](MonitorStatus::NoConfig) { return labelled(StatusDot::White, u"No credentials configured."_s); });
}

void VanteloApp::openSettings()
{
    if (m_menuBarExtra) // otherwise the program is ending
        WindowManager::shared().openSettings(m_appState);
}

void VanteloApp::quit()
{
    if (m_menuBarExtra) // otherwise the program is ending
        m_menuBarExtra->closeMenu();
    QCoreApplication::exit(0);
}

void VanteloApp::giveFocusBackOnceWindowless()
{
    if (std::ranges::none_of(QGuiApplication::topLevelWindows(), &QWindow::isVisible))
        giveFocusBack();
}

void VanteloApp::redrawSoon()
{
    if (std::exchange(m_redrawPending, true))
        return;
    QMetaObject::invokeMethod(this, &VanteloApp::redraw, Qt::QueuedConnection);
}

void VanteloApp::redraw()
{
    m_redrawPending = false;
    if (!m_menuBarExtra)
        return; // the program is ending
    m_menuBarExtra->setLabel(label(*m_appState));
    m_menuBarExtra->setRows(MenuBarView(m_appState).body());
}
