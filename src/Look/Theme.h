// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QColor>

class QPalette;

/// The colours and measures that the windows add to the platform's own style, fit for light and dark palettes.
namespace Theme {

enum class Ink { Primary, Secondary, Link, Red, Green, Orange, Blue };

/// The colour to write or draw with on the palette's window colour.
QColor colour(Ink ink, const QPalette &palette);

enum class Box { Warning, Tip, Code, Group };

struct BoxColours {
    QColor fill;
    QColor stroke;
};

BoxColours boxColours(Box box, const QPalette &palette);

QColor dividerColour(const QPalette &palette);

inline constexpr int boxPadding = 12;
inline constexpr double boxCornerRadius = 8.0;
inline constexpr double boxStrokeWidth = 1.0;

} // namespace Theme
