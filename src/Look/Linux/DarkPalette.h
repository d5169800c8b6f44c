// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QPalette>

/// The colours of dark windows where neither Qt nor the desktop brings any.
QPalette darkPalette();
