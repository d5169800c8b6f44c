// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "TestClock.h"

namespace {

double now = 1'700'000'000.0;

} // namespace

double secondsSince1970() { return now; }

void TestClock::set(double secondsSince1970) { now = secondsSince1970; }

void TestClock::advance(double seconds) { now += seconds; }
