// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Views/WindowManager.h"

#include "Controls/Windows/HostingWindow.h"
#include "Views/SettingsView.h"
#include "Views/SetupGuideView.h"

using namespace Qt::StringLiterals;

namespace {

bool broughtToFront(HostingWindow *window)
{
    // Wayland never tells that a window is minimised; it then counts as visible.
    if (!window || !window->isVisible() || window->isMinimized())
        return false;
    window->bringToFront();
    return true;
}

void replace(QPointer<HostingWindow> &remembered, HostingWindow *successor)
{
    if (remembered)
        remembered->close();
    remembered = successor;
    successor->centre();
    successor->bringToFront();
}

} // namespace

WindowManager::WindowManager() = default;

WindowManager::~WindowManager() = default;

WindowManager &WindowManager::shared()
{
    static WindowManager manager;
    return manager;
}

void WindowManager::openSettings(const std::shared_ptr<AppState> &appState)
{
    if (broughtToFront(m_settingsWindow))
        return;
    replace(m_settingsWindow, new HostingWindow(new SettingsView(appState), u"Vantelo Settings"_s, {500, 520},
                                  HostingWindow::Sizing::FitsContent));
}

void WindowManager::openSetupGuide()
{
    if (broughtToFront(m_guideWindow))
        return;
    replace(m_guideWindow,
        new HostingWindow(new SetupGuideView, u"Setup Guide"_s, {600, 700}, HostingWindow::Sizing::Resizable));
}

void WindowManager::closeAll()
{
    delete m_settingsWindow;
    delete m_guideWindow;
}
