# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT

from hosts import gnome


class Host(gnome.Host):
    name = "GNOME Shell at 200 %"
    scale = 2
