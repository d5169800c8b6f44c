// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/Clock.h"

/// The clock of every test program: it stands still until a test moves it.
namespace TestClock {

void set(double secondsSince1970);
void advance(double seconds);

} // namespace TestClock
