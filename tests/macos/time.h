// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

// What macOS's header has beyond Debian's, and the program uses; all of macOS 10.12.
#include_next <time.h>

#ifndef CLOCK_UPTIME_RAW
#define CLOCK_UPTIME_RAW 8
extern "C" unsigned long long clock_gettime_nsec_np(clockid_t clock);
#endif
