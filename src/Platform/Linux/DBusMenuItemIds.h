// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Platform/MenuBarExtra.h"

#include <map>
#include <tuple>

/// Gives rows their ids. Hosts keep a widget for each id, so an id stands for the same kind of row for ever: a
/// button or link has one by its text, whatever the menu around it; lines and dividers have one by their order.
class DBusMenuItemIds {
public:
    /// One id a row, all different, none of them 0.
    std::vector<int> of(const MenuRows &rows);

private:
    using Key = std::tuple<MenuRow::Kind, QString, int>; ///< the last: which of those that are alike

    std::map<Key, int> m_ids;
};
