// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QImage>

/// The system's symbol of this name in black, as large as fits into the middle of a square of so many pixels. Null
/// where there is none.
QImage symbolPicture(const QString &name, int side);
