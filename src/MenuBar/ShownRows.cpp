// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "MenuBar/ShownRows.h"

#include <algorithm>

namespace {

bool fitTheSameItem(const MenuRow &one, const MenuRow &other)
{
    return one.kind == other.kind || (one.isCommand() && other.isCommand());
}

} // namespace

ShownRows::Change ShownRows::setNewest(const MenuRows &rows, bool menuIsOpen)
{
    m_newest = rows;
    return update(menuIsOpen);
}

ShownRows::Change ShownRows::update(bool menuIsOpen)
{
    const bool sameItems = std::ranges::equal(m_newest, m_shown, fitTheSameItem);
    if (!sameItems && menuIsOpen)
        return Change::Nothing;
    m_shown = m_newest;
    return sameItems ? Change::Texts : Change::Items;
}
