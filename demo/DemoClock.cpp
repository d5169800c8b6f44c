// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "DemoWorld.h"
#include "Foundation/Clock.h"

#include <chrono>

double secondsSince1970()
{
    using namespace std::chrono;
    static const auto start = steady_clock::now();
    static const double startTime = duration<double>(system_clock::now().time_since_epoch()).count();
    return startTime + duration<double>(steady_clock::now() - start).count() * DemoWorld::speed;
}
