// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include "MenuBar/MenuBarExtra.h"

#include <QImage>

/// The dot as a square picture with straight alpha, for hosts that show no emoji. A darker rim keeps every dot,
/// the white one above all, visible on light bars.
QImage statusDotImage(StatusDot dot, int size);
