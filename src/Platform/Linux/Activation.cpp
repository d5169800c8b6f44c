// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Platform/Activation.h"

// Here windows are activated, one by one, and not programs.
void activateIgnoringOtherApps() {}
