# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT

from hosts import gnome
from look import Look


class Host(gnome.Host):
    """Everything of the shell's goes from right to left; the program's texts are English and its windows go on to run
    from left to right."""

    name = "GNOME Shell in Arabic"
    look = Look(right_to_left=True)
