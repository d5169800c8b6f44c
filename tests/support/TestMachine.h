// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Machine/MachineTime.h"

/// The machine that every test program runs on: no time passes, asleep or awake, until a test lets it, and the network
/// is what the test says. The time of day is TestClock's.
namespace TestMachine {

/// Time passes awake; whatever is due goes off, each at its time.
void pass(std::chrono::nanoseconds time);
/// The machine sleeps for this long; what fell due meanwhile goes off once it has woken.
void sleep(std::chrono::nanoseconds time);

/// Time passes awake, but the process gets no turn until the end.
void stop(std::chrono::nanoseconds time);

/// At first it is.
void setOnline(bool online);
bool isOnline();
/// Whether somebody waits for the machine to be online.
bool isWaitedFor();

/// Another Wi-Fi, a VPN that comes or goes.
void changeNetwork();

} // namespace TestMachine
