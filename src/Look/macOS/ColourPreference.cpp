// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Look/ColourPreference.h"

// Qt's palette follows the system by itself.
void ColourPreference::follow() {}
