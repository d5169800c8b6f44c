// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QPointer>

#include <memory>

class AppState;
class HostingWindow;

/// Opens the program's two ordinary windows, at most one of each kind. A window that is still on screen is
/// brought to the front; otherwise a new one is made around a new view, and nothing of the old one carries over.
class WindowManager {
public:
    static WindowManager &shared();

    void openSettings(const std::shared_ptr<AppState> &appState);
    void openSetupGuide();

    /// Deletes the windows, at the program's end.
    void closeAll();

private:
    WindowManager();
    ~WindowManager();
    Q_DISABLE_COPY_MOVE(WindowManager)

    QPointer<HostingWindow> m_settingsWindow;
    QPointer<HostingWindow> m_guideWindow;
};
