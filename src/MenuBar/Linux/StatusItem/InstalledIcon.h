// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include "MenuBar/MenuBarExtra.h"

/// The name of the dot's icon where it is installed, else empty: a host that is given the name of an icon that it
/// cannot find would draw none.
QString installedIconName(StatusDot dot);
