// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include "MenuBar/MenuBarExtra.h"

#include <QObject>

#include <memory>

class AppState;

/// The program itself: the one state, and the menu-bar extra that shows it.
class VanteloApp : public QObject {
    Q_OBJECT

public:
    /// Runs the program until the user quits; the process's exit code.
    static int main(int argc, char **argv);

    explicit VanteloApp(std::unique_ptr<MenuBarExtra> menuBarExtra);
    /// Ends whatever is under way: transfers, alerts, tasks.
    ~VanteloApp() override;
    Q_DISABLE_COPY_MOVE(VanteloApp)

    /// The label for the state as it is now.
    static MenuBarLabel label(const AppState &appState);

    void openSettings();
    /// Lets main() go on to the end; what keeps it from there is closed.
    void quit();

private:
    void giveFocusBackOnceWindowless();
    void redrawSoon();
    void redraw();

    std::shared_ptr<AppState> m_appState;
    std::unique_ptr<MenuBarExtra> m_menuBarExtra;
    bool m_redrawPending = false;
};
