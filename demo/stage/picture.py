# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT

"""Looks into the pictures of the desktop."""

import gi

gi.require_version('GdkPixbuf', '2.0')
from gi.repository import GdkPixbuf  # noqa: E402

_HEIGHT_OF_PANEL = 40


def shows_green(path):
    """Whether something green is drawn below the panel, such as the words after a successful test."""
    picture = GdkPixbuf.Pixbuf.new_from_file(str(path))
    rows = picture.get_pixels()[_HEIGHT_OF_PANEL * picture.get_rowstride():]
    channels = picture.get_n_channels()
    colours = zip(*(rows[channel::channels] for channel in range(3)))
    return any(green > red + 40 and green > blue + 40 for red, green, blue in colours)
