// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <cstdint>

/// The number with its thousands grouped by ",", whatever the user's locale is: 1234567 is "1,234,567".
QString formatNumber(std::int64_t number);
