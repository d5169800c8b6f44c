// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Machine/MachineTime.h"

#include <ctime>

namespace {

std::chrono::nanoseconds read(clockid_t clock)
{
    timespec time{};
    ::clock_gettime(clock, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

} // namespace

std::chrono::nanoseconds MachineTime::elapsed() { return read(CLOCK_BOOTTIME); }

std::chrono::nanoseconds MachineTime::asleep()
{
    const auto awake = read(CLOCK_MONOTONIC);
    return read(CLOCK_BOOTTIME) - awake;
}
