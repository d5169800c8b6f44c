// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Http/InheritedSockets.h"

#include <unistd.h>

// All at once, because libcurl has some that it shows to nobody.
void keepSocketsToOurselves()
{
    constexpr unsigned firstOfOurOwn = 3; // after input, output and errors
    ::close_range(firstOfOurOwn, ~0U, CLOSE_RANGE_CLOEXEC);
}
