# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT

from hosts import gnome
from look import Look


class Host(gnome.Host):
    name = "GNOME Shell at 200 %"
    look = Look(scale=2)
