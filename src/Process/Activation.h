// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

/// Makes this program the active one, whichever the user is in, so that the window it brings up takes the keys.
void activateIgnoringOtherApps();

class QWindow;

/// Whether a window that is shown is out of the user's sight all the same, as on another workspace, and would come to
/// the user only if it appeared anew.
bool isElsewhere(const QWindow &window);
