// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QRect>

class QScreen;

/// Where on the screens the program's windows may stand.
namespace ScreenRoom {

/// The screen that the user is at, which is the mouse pointer's.
QScreen *pointed();

/// The part of the screen that the content of a window may take: what panels leave free, less its frame.
QRect forContent(const QScreen *screen);

/// Where a window with this content goes to stand in the middle, or so much above it that its whole frame is in sight.
QPoint centre(const QSize &content, const QScreen *screen);

} // namespace ScreenRoom
