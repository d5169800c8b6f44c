// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Look/Theme.h"

#include <QPalette>

#include <cmath>

namespace {

double luminance(const QColor &colour)
{
    const auto linear = [](double channel) {
        return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

/// The ratio by which accessibility guidelines measure whether text is readable; they ask for 4.5.
double contrast(const QColor &one, const QColor &other)
{
    const double a = luminance(one) + 0.05;
    const double b = luminance(other) + 0.05;
    return a > b ? a / b : b / a;
}

QColor mixed(const QColor &over, const QColor &under, double share)
{
    const auto channel = [share](int top, int bottom) { return qRound(top * share + bottom * (1.0 - share)); };
    return {channel(over.red(), under.red()), channel(over.green(), under.green()), channel(over.blue(), under.blue())};
}

QColor withOpacity(QColor colour, double opacity)
{
    colour.setAlphaF(static_cast<float>(opacity));
    return colour;
}

bool isDark(const QPalette &palette) { return luminance(palette.color(QPalette::Window)) < 0.18; }

QColor linkColour(const QPalette &palette)
{
    // Dark palettes often keep the pure blue of light ones.
    const QColor own = palette.color(QPalette::Link);
    const bool readable = contrast(own, palette.color(QPalette::Window)) >= 4.5;
    return readable ? own : Theme::colour(Theme::Ink::Blue, palette);
}

} // namespace

QColor Theme::colour(Ink ink, const QPalette &palette)
{
    const bool dark = isDark(palette);
    switch (ink) {
    case Ink::Primary:
        return palette.color(QPalette::WindowText);
    case Ink::Secondary:
        return mixed(palette.color(QPalette::WindowText), palette.color(QPalette::Window), 0.7);
    case Ink::Link:
        return linkColour(palette);
    case Ink::Red:
        return dark ? QColor(0xff, 0x7b, 0x72) : QColor(0xb8, 0x1c, 0x28);
    case Ink::Green:
        return dark ? QColor(0x5c, 0xd6, 0x7a) : QColor(0x16, 0x6c, 0x31);
    case Ink::Orange:
        return dark ? QColor(0xff, 0xa3, 0x48) : QColor(0xe0, 0x6c, 0x00);
    case Ink::Blue:
        return dark ? QColor(0x78, 0xae, 0xed) : QColor(0x1a, 0x5f, 0xb4);
    }
    return {};
}

Theme::BoxColours Theme::boxColours(Box box, const QPalette &palette)
{
    if (box == Box::Code)
        return {.fill = withOpacity(palette.color(QPalette::Window), 0.5),
            .stroke = withOpacity(colour(Ink::Secondary, palette), 0.3)};
    if (box == Box::Group)
        return {.fill = withOpacity(palette.color(QPalette::WindowText), 0.04), .stroke = dividerColour(palette)};
    const QColor tint = colour(box == Box::Warning ? Ink::Orange : Ink::Blue, palette);
    return {.fill = withOpacity(tint, 0.1), .stroke = withOpacity(tint, 0.3)};
}

QColor Theme::dividerColour(const QPalette &palette) { return withOpacity(palette.color(QPalette::WindowText), 0.2); }
