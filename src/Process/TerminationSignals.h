// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>

/// SIGTERM and SIGINT as events, so that the program ends as it does by Quit.
namespace TerminationSignals {

/// From now until the process is gone they end nothing by themselves. The first thing to call; needs no
/// application object.
void hold();

/// Calls this once from the event loop when one of them comes, or has come since hold().
void onReceived(std::function<void()> end);

} // namespace TerminationSignals
