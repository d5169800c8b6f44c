// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <memory>

class AppState;

/// Opens the program's two ordinary windows.
class WindowManager {
public:
    static WindowManager &shared();

    void openSettings(const std::shared_ptr<AppState> &appState);
    void openSetupGuide();

private:
    WindowManager() = default;
};
