// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Machine/MachineTime.h"

#import <Foundation/Foundation.h>

#include <ctime>

std::chrono::nanoseconds MachineTime::elapsed()
{
    timespec time{};
    ::clock_gettime(CLOCK_MONOTONIC_RAW, &time); // goes on asleep, here
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

std::chrono::nanoseconds MachineTime::asleep()
{
    const std::chrono::duration<double> awake(NSProcessInfo.processInfo.systemUptime);
    return elapsed() - std::chrono::duration_cast<std::chrono::nanoseconds>(awake);
}
