// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

// What Qt 6.4 needs and later versions do not: those ask the portal themselves. This file's work can go, down to an
// empty follow(), once Qt 6.4 (Debian 12, Ubuntu 24.04) need not be supported.

#include "Look/ColourPreference.h"

#include "Look/Linux/DarkPalette.h"
#include "Look/Linux/DesktopColours.h"

#include <QGuiApplication>
#include <QPalette>
#include <QStyleHints>

namespace {

/// Whether Qt heeds the desktop's preference itself: it knows of one, or the desktop's own palette is dark already.
bool isHeededByQt()
{
    const QVariant scheme = QGuiApplication::styleHints()->property("colorScheme"); // from Qt 6.5 on
    const bool known = scheme.isValid() && scheme.toInt() != 0;
    return known || QPalette().color(QPalette::Window).lightness() < 128;
}

void apply(bool dark)
{
    static bool applied = false;
    if (dark == applied || (dark && isHeededByQt()))
        return;
    applied = dark;
    QGuiApplication::setPalette(dark ? darkPalette() : QPalette());
}

} // namespace

void ColourPreference::follow()
{
    static const bool following = [] {
        if (!isHeededByQt())
            (new DesktopColours(qGuiApp))->onPreference(&apply);
        return true;
    }();
    Q_UNUSED(following)
}
