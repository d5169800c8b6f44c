// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGlobal>

#include <functional>
#include <memory>

/// The program as the user knows it: one thing to open.
namespace Bundle {

/// Calls back whenever the user opens the bundle that this process runs from, for as long as somebody holds what it
/// returns. To be asked for before the event loop begins.
std::shared_ptr<void> onReopening(std::function<void()> reopened);

/// Opens the bundle that a process runs from, as the user does.
void open(qint64 process);

} // namespace Bundle
