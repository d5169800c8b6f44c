// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

/// Makes this program the active one, whichever the user is in, so that the window it brings up takes the keys.
void activateIgnoringOtherApps();
