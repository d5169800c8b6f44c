# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT

from x11desktop import X11Desktop


class Host(X11Desktop):
    """No status area at all, as on GNOME without the extension."""

    name = "no host at all"
    programs = ["Xvfb", "openbox"]
    has_panel = False
