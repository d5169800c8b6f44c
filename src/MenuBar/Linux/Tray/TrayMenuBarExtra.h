// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include "MenuBar/Linux/Tray/RowsMenu.h"
#include "MenuBar/MenuBarExtra.h"

#include <QSystemTrayIcon>

#include <optional>

/// The menu-bar extra for a legacy system tray, which shows a picture only: the text is in the tooltip.
/// Where no tray is there, it waits for one.
class TrayMenuBarExtra : public MenuBarExtra {
public:
    TrayMenuBarExtra();

    void setLabel(const MenuBarLabel &label) override;
    void setRows(const MenuRows &rows) override { m_menu.setRows(rows); }

private:
    RowsMenu m_menu;
    QSystemTrayIcon m_icon;
    std::optional<StatusDot> m_dot;
};
