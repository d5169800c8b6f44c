// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <chrono>

/// The machine's own time, which nobody sets. Chosen at link time: the product asks the system, tests let it pass.
namespace MachineTime {

/// Time since a fixed moment before the program's start, the time asleep included.
std::chrono::nanoseconds elapsed();

/// How much of it the machine has slept. Two readings may differ by less than `briefestSleep` although it was awake.
std::chrono::nanoseconds asleep();

inline constexpr std::chrono::milliseconds briefestSleep{100};

/// Whether the machine has slept since asleep() gave this.
inline bool hasSleptSince(std::chrono::nanoseconds before) { return asleep() - before >= briefestSleep; }

} // namespace MachineTime
