// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Process/Activation.h"

#include <QWindow>

// Here windows are activated, one by one, and not programs.
void activateIgnoringOtherApps() {}

bool isElsewhere(const QWindow &window) { return window.isVisible() && !window.isExposed(); }
