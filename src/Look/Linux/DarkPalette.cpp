// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Look/Linux/DarkPalette.h"

QPalette darkPalette()
{
    const QColor text(0xf2, 0xf2, 0xf2);
    const QColor pale(0x8c, 0x8c, 0x8c);
    QPalette palette(QColor(0x3c, 0x3c, 0x3c), QColor(0x2b, 0x2b, 0x2b)); // buttons, windows; the rest follows
    palette.setColor(QPalette::Base, QColor(0x1e, 0x1e, 0x1e));
    palette.setColor(QPalette::AlternateBase, QColor(0x26, 0x26, 0x26));
    palette.setColor(QPalette::ToolTipBase, QColor(0x3c, 0x3c, 0x3c));
    palette.setColor(QPalette::Highlight, QColor(0x1a, 0x5f, 0xb4));
    palette.setColor(QPalette::Link, QColor(0x78, 0xae, 0xed));
    palette.setColor(QPalette::LinkVisited, QColor(0xc0, 0x9b, 0xe8));
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
             QPalette::ToolTipText, QPalette::HighlightedText, QPalette::BrightText}) {
        palette.setColor(role, text);
        palette.setColor(QPalette::Disabled, role, pale);
    }
    palette.setColor(QPalette::PlaceholderText, QColor(0xa8, 0xa8, 0xa8));
    return palette;
}
