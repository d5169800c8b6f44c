// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Process/Activation.h"

// Here windows are activated, one by one, and not programs.
void activateIgnoringOtherApps() {}
