// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGlobal>

class QWindow;

/// Makes this program the active one, whichever the user is in, and the window the first of all, so that it takes the
/// keys. The window is named by QWidget::winId().
void activateIgnoringOtherApps(quintptr window);

/// Once the program has no window any more: the one that the user came from takes the keys again.
void giveFocusBack();

/// Whether a window that is shown is out of the user's sight all the same, as on another workspace, and would come to
/// the user only if it appeared anew.
bool isElsewhere(const QWindow &window);
