// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Platform/MenuBarExtra.h"

namespace {
class Nothing : public MenuBarExtra {
    void setLabel(const MenuBarLabel &) override {}
    void setRows(const MenuRows &) override {}
};
} // namespace

std::unique_ptr<MenuBarExtra> MenuBarExtra::create() { return std::make_unique<Nothing>(); }
