// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

namespace ColourPreference {

/// Has all windows, alerts and menus follow the desktop's preference for light or dark from now on. To be called when
/// the first of them is made; it costs nothing before, and nothing when it is called again.
void follow();

} // namespace ColourPreference
