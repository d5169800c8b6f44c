// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include "MenuBar/MenuBarExtra.h"

#include <map>
#include <utility>

/// Gives rows their ids. Hosts keep a widget for each id, so an id stands for the same row of the same menu for
/// ever. Menus of different shape share no id: GNOME does not move a widget that stays when others come or go
/// around it.
class DBusMenuItemIds {
public:
    /// One id a row, all different, none of them 0.
    std::vector<int> of(const MenuRows &rows);

private:
    /// What changes only with the layout: the kinds of all rows, and the texts of those that can be chosen.
    using Shape = std::vector<std::pair<MenuRow::Kind, QString>>;

    std::map<Shape, std::vector<int>> m_ids;
    int m_last = 0;
};
