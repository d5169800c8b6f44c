// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>
#include <memory>

/// Calls back whenever the machine has woken, for as long as somebody holds what it returns.
std::shared_ptr<void> onWaking(std::function<void()> woke);
