// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include "MenuBar/ShownRows.h"

#include <QMenu>

/// The rows as a pop-up menu of the program's own, for hosts that do not draw menus themselves.
class RowsMenu : public QMenu {
    Q_OBJECT

public:
    RowsMenu();

    void setRows(const MenuRows &rows);
    /// Below what was clicked or, where there is no room, above it; and clear of the panel.
    void popUpBeside(const QRect &clicked);

protected:
    void initStyleOption(QStyleOptionMenuItem *option, const QAction *action) const override;

private:
    void apply(ShownRows::Change change);
    void rebuild();
    void retitle();
    void chooseRow(std::size_t index) const;

    ShownRows m_shown;
};
