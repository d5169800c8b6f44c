// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "MenuBar/Linux/BusMenu/DBusMenuItemIds.h"

#include <algorithm>

std::vector<int> DBusMenuItemIds::of(const MenuRows &rows)
{
    Shape shape;
    for (const MenuRow &row : rows) {
        shape.emplace_back(row.kind, row.isCommand() ? row.text : QString());
    }
    std::vector<int> &ids = m_ids[shape];
    if (ids.size() != rows.size()) {
        ids.resize(rows.size());
        std::ranges::generate(ids, [this] { return ++m_last; });
    }
    return ids;
}
