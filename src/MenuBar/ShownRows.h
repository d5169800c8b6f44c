// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include "MenuBar/MenuBarExtra.h"

/// The rows that the items of a menu stand for: the newest, except while the menu is open and rows would come or
/// go; that waits until it is closed.
class ShownRows {
public:
    /// What the items need so that they stand for rows().
    enum class Change {
        Nothing,
        Texts, ///< each item stays and takes what its row says now
        Items, ///< other items altogether
    };

    Change setNewest(const MenuRows &rows, bool menuIsOpen);
    /// Catches up with what has been waiting.
    Change update(bool menuIsOpen);

    const MenuRows &rows() const { return m_shown; }

private:
    MenuRows m_newest;
    MenuRows m_shown;
};
