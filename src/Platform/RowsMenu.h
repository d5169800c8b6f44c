// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Platform/MenuBarExtra.h"

#include <QMenu>

/// The rows as a pop-up menu of the program's own, for hosts that do not draw menus themselves. Rows that keep
/// their kind are changed in place; while the menu is open nothing is added or removed, that waits until it
/// closes.
class RowsMenu : public QMenu {
    Q_OBJECT

public:
    RowsMenu();

    void setRows(const MenuRows &rows);

private:
    void update();
    void rebuild();
    void retitle();
    void chooseRow(std::size_t index) const;

    MenuRows m_rows;  ///< the newest
    MenuRows m_shown; ///< what the actions stand for
};
