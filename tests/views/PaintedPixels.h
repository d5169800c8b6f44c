// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Contrast.h"

#include <QImage>
#include <QWidget>

#include <algorithm>

/// What was painted, measured in the pixels of a window's picture.
namespace PaintedPixels {

/// The part of the window where the widget stands.
inline QImage of(QWidget *window, const QWidget *widget)
{
    return window->grab(QRect(widget->mapTo(window, QPoint()), widget->size())).toImage();
}

/// The marks that make at least this contrast with the ground.
inline QRect ink(const QImage &picture, const QColor &ground, double least = 1.5)
{
    QRect ink;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            if (contrast(picture.pixelColor(x, y), ground) >= least)
                ink |= QRect(x, y, 1, 1);
    return ink;
}

/// The strongest contrast in the picture with the ground.
inline double strongest(const QImage &picture, const QColor &ground)
{
    double strongest = 1.0;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            strongest = std::max(strongest, contrast(picture.pixelColor(x, y), ground));
    return strongest;
}

/// Whether something in the picture is in colour, and not only in greys or in tints of the ground.
inline bool isColourful(const QImage &picture)
{
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            if (picture.pixelColor(x, y).hslSaturation() > 150 && picture.pixelColor(x, y).value() > 150)
                return true;
    return false;
}

} // namespace PaintedPixels
