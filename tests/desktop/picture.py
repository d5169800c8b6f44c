# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""Pictures of the screen, and the dot in them."""

from dataclasses import dataclass

import gi

gi.require_version("GdkPixbuf", "2.0")
from gi.repository import GdkPixbuf, GLib  # noqa: E402

# The fill of each dot, as the program draws it.
FILLS = {"🟢": bytes((0x34, 0xC7, 0x59)), "🔴": bytes((0xFF, 0x3B, 0x30)), "⚪": bytes((0xFF, 0xFF, 0xFF))}
_PIXEL = 3  # bytes: red, green, blue


@dataclass(frozen=True)
class Rectangle:
    x: int
    y: int
    width: int
    height: int

    @property
    def middle(self):
        return self.x + self.width // 2, self.y + self.height // 2

    def contains(self, x, y):
        return self.x <= x < self.x + self.width and self.y <= y < self.y + self.height


class Picture:
    """Pixels as red, green and blue, one row after the other."""

    def __init__(self, width, height, pixels):
        self.width, self.height, self.pixels = width, height, pixels

    @classmethod
    def read(cls, path):
        loaded = GdkPixbuf.Pixbuf.new_from_file(str(path))
        width, height, channels = loaded.get_width(), loaded.get_height(), loaded.get_n_channels()
        pixels, stride = loaded.get_pixels(), loaded.get_rowstride()
        rows = [pixels[y * stride:y * stride + width * channels] for y in range(height)]
        if channels == 4:
            rows = [_without_every_fourth(row) for row in rows]
        return cls(width, height, b"".join(rows))

    @classmethod
    def of_bgrx(cls, width, height, data):
        rgb = bytearray(width * height * _PIXEL)
        rgb[0::3], rgb[1::3], rgb[2::3] = data[2::4], data[1::4], data[0::4]
        return cls(width, height, bytes(rgb))

    def save(self, path, part=None):
        part = part or Rectangle(0, 0, self.width, self.height)
        rows = b"".join(self.row(y, part.x, part.width) for y in range(part.y, part.y + part.height))
        GdkPixbuf.Pixbuf.new_from_bytes(GLib.Bytes.new(rows), GdkPixbuf.Colorspace.RGB, False, 8, part.width,
                                        part.height, part.width * _PIXEL).savev(str(path), "png", [], [])

    def row(self, y, x=0, width=None):
        start = (y * self.width + x) * _PIXEL
        return self.pixels[start:start + (self.width - x if width is None else width) * _PIXEL]

    def find_dot(self, dot, size=None, opacity=1.0):
        """Where a disc of the dot's colour is, or None. `size` is the diameter of its fill, where that is known:
        white alone could be anything. Black shows through what is not opaque."""
        fill = bytes(round(opacity * part) for part in FILLS[dot])
        for y in range(self.height):
            for x, run in self._runs(y, fill):
                found = self._disc_below(x, y, run, fill)
                if found and (size is None or abs(found.width - size) <= 2):
                    return found
        return None

    def difference(self, other):
        """The smallest rectangle that holds all that is not the same in both; None where nothing is."""
        rows = [y for y in range(self.height) if self.row(y) != other.row(y)]
        if not rows:
            return None
        left, right = self.width, 0
        for y in rows:
            mine, others = self.row(y), other.row(y)
            changed = [x for x in range(self.width) if mine[3 * x:3 * x + 3] != others[3 * x:3 * x + 3]]
            left, right = min(left, changed[0]), max(right, changed[-1])
        return Rectangle(left, rows[0], right - left + 1, rows[-1] - rows[0] + 1)

    def count(self, colour):
        return sum(run for y in range(self.height) for _, run in self._runs(y, colour))

    def _runs(self, y, colour):
        """(x, length) of every stretch of the colour in a row."""
        row, position = self.row(y), 0
        while (position := row.find(colour, position)) >= 0:
            if position % _PIXEL:
                position += 1
                continue
            start = position
            while row[position:position + _PIXEL] == colour:
                position += _PIXEL
            yield start // _PIXEL, (position - start) // _PIXEL

    def _disc_below(self, x, y, run, colour):
        """The disc whose uppermost row is this one: rows of the colour around one middle, growing, then shrinking."""
        middle, widths = x + run // 2, []
        for line in range(y, self.height):
            here = next((length for start, length in self._runs(line, colour)
                         if start <= middle < start + length), 0)
            if not here:
                break
            widths.append(here)
        widest = max(widths)
        round_enough = abs(len(widths) - widest) <= 2 and widths[0] < widest and widths[-1] < widest
        return Rectangle(middle - widest // 2, y, widest, len(widths)) if widest >= 6 and round_enough else None


def _without_every_fourth(row):
    rgb = bytearray(len(row) // 4 * 3)
    rgb[0::3], rgb[1::3], rgb[2::3] = row[0::4], row[1::4], row[2::4]
    return bytes(rgb)
