// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGlobal>

/// What the demo account and the demo program agree on.
namespace DemoWorld {

/// The account's port on loopback.
inline constexpr quint16 port = 47621;

/// One real second lasts two minutes in the demo, so that a poll comes every five seconds and an account that
/// stopped delivering is noticed while one watches.
inline constexpr double speed = 120.0;

} // namespace DemoWorld
