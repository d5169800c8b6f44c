// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Machine/MachineTime.h"

#include <time.h>

namespace {

std::chrono::nanoseconds read(clockid_t clock) { return std::chrono::nanoseconds(::clock_gettime_nsec_np(clock)); }

} // namespace

std::chrono::nanoseconds MachineTime::elapsed()
{
    return read(CLOCK_MONOTONIC_RAW); // goes on asleep, here
}

std::chrono::nanoseconds MachineTime::asleep()
{
    const auto awake = read(CLOCK_UPTIME_RAW);
    return elapsed() - awake;
}
