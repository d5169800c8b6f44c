// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <chrono>
#include <functional>
#include <memory>

/// Goes off once MachineTime::elapsed() has come to a given time, or at waking where that was in a sleep. It never
/// wakes the machine, and costs nothing until then. Chosen at link time, like MachineTime.
class MachineAlarm {
public:
    static std::unique_ptr<MachineAlarm> create(std::function<void()> goOff);
    virtual ~MachineAlarm() = default;

    /// Sets it for this time, instead of the one it was set for before.
    virtual void setFor(std::chrono::nanoseconds elapsed) = 0;
};
