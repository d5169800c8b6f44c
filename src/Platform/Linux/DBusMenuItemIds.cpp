// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Platform/Linux/DBusMenuItemIds.h"

std::vector<int> DBusMenuItemIds::of(const MenuRows &rows)
{
    std::vector<int> ids;
    std::map<std::pair<MenuRow::Kind, QString>, int> alike;
    for (const MenuRow &row : rows) {
        const bool command = row.kind == MenuRow::Kind::Button || row.kind == MenuRow::Kind::Link;
        const QString name = command ? row.text : QString();
        const Key key{row.kind, name, alike[{row.kind, name}]++};
        const int next = static_cast<int>(m_ids.size()) + 1;
        ids.push_back(m_ids.emplace(key, next).first->second);
    }
    return ids;
}
