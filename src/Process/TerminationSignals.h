// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>

/// SIGTERM and SIGINT as events, so that the program ends as it does by Quit.
namespace TerminationSignals {

/// From now until the process is gone they end nothing by themselves, and SIGPIPE does not end the process either: a
/// reader that has gone is told by the failed write. The first thing to call; needs no application object.
void hold();

/// Calls this once from the event loop when one of them comes, or has come since hold().
void onReceived(std::function<void()> end);

} // namespace TerminationSignals
