// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

/// The time of day, in seconds since 1 January 1970 UTC with sub-second precision. Chosen at link time:
/// the product reads the system's clock, tests set their own.
double secondsSince1970();
