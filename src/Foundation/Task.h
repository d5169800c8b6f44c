// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QCoroTask>

/// Tasks that nobody awaits: what a timer tick, a click or the start-up begins.
namespace Task {

/// Lets the task run on by itself and keeps count of it until it ends.
void start(QCoro::Task<> task);

/// Number of tasks started and not yet ended.
int running();

} // namespace Task
