// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Views/WindowManager.h"

WindowManager &WindowManager::shared()
{
    static WindowManager manager;
    return manager;
}

void WindowManager::openSettings(const std::shared_ptr<AppState> &) {}

void WindowManager::openSetupGuide() {}
