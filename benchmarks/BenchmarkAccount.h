// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <memory>

class AppState;

/// A state that shows figures: made once, from preferences of its own and an account on loopback.
namespace BenchmarkAccount {

/// Opens the account and waits for its figures; false where they do not come.
bool open();
const std::shared_ptr<AppState> &state();
void close();

} // namespace BenchmarkAccount
