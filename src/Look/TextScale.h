// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Look/TextStyle.h"

/// How large the system sets a style, as a part of its font.
double textScale(TextStyle style);
