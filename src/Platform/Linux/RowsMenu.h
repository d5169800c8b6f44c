// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Platform/ShownRows.h"

#include <QMenu>

/// The rows as a pop-up menu of the program's own, for hosts that do not draw menus themselves.
class RowsMenu : public QMenu {
    Q_OBJECT

public:
    RowsMenu();

    void setRows(const MenuRows &rows);

private:
    void apply(ShownRows::Change change);
    void rebuild();
    void retitle();
    void chooseRow(std::size_t index) const;

    ShownRows m_shown;
};
