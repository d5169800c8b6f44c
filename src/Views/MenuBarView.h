// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include "MenuBar/MenuBarExtra.h"

#include <memory>

class AppState;

/// The menu that drops down from the menu bar: rows made from the state alone, and the commands behind them.
class MenuBarView {
public:
    explicit MenuBarView(std::shared_ptr<AppState> appState);

    MenuRows body() const;

private:
    MenuRows figureRows() const;
    MenuRows setUpRows() const;
    MenuRows errorRows(const QString &message) const;

    MenuRow refreshButton() const;
    MenuRow settingsButton(const QString &title) const;

    std::shared_ptr<AppState> m_appState;
};
