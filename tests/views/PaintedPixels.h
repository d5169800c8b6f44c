// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Contrast.h"

#include <QHash>
#include <QImage>
#include <QWidget>

#include <algorithm>
#include <cmath>

/// What was painted, measured in the pixels of a window's picture.
namespace PaintedPixels {

/// The part of the window where the widget stands.
inline QImage of(QWidget *window, const QWidget *widget)
{
    return window->grab(QRect(widget->mapTo(window, QPoint()), widget->size())).toImage();
}

/// A part of a picture that is given in points, of which each may be several pixels.
inline QImage part(const QImage &picture, const QRect &points)
{
    const double ratio = picture.devicePixelRatio();
    const QRectF pixels(points.x() * ratio, points.y() * ratio, points.width() * ratio, points.height() * ratio);
    return picture.copy(pixels.toRect() & picture.rect());
}

/// The pixel that this point begins with; a negative one is counted from the other end.
inline QColor at(const QImage &picture, int x, int y)
{
    const auto pixel = [&](int point, int extent) {
        const int start = qRound(point * picture.devicePixelRatio());
        return point < 0 ? extent + start : start;
    };
    return picture.pixelColor(pixel(x, picture.width()), pixel(y, picture.height()));
}

/// The colour of most of the picture.
inline QColor ground(const QImage &picture)
{
    QHash<QRgb, int> counts;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            ++counts[picture.pixel(x, y)];
    const auto most = std::max_element(counts.cbegin(), counts.cend());
    return most == counts.cend() ? QColor() : QColor::fromRgb(most.key());
}

/// Calls for each pixel that is not of the ground's very colour, with its place and its contrast with the ground.
template <class Visit>
void forEachMark(const QImage &picture, const QColor &ground, Visit visit)
{
    QHash<QRgb, double> contrasts; // a window has few colours, and to compare them takes time
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const QRgb pixel = picture.pixel(x, y);
            if (pixel == ground.rgb())
                continue;
            auto known = contrasts.constFind(pixel);
            if (known == contrasts.cend())
                known = contrasts.insert(pixel, contrast(QColor::fromRgb(pixel), ground));
            visit(QPoint(x, y), *known);
        }
    }
}

/// The marks that make at least this contrast with the ground.
inline QRect ink(const QImage &picture, const QColor &ground, double least = 1.5)
{
    QRect ink;
    forEachMark(picture, ground, [&](QPoint place, double contrast) {
        if (contrast >= least)
            ink |= QRect(place, QSize(1, 1));
    });
    return ink;
}

/// The colour in the picture that makes the strongest contrast with the ground.
inline QColor mark(const QImage &picture, const QColor &ground)
{
    QColor mark = ground;
    double strongest = 1.0;
    forEachMark(picture, ground, [&](QPoint place, double contrast) {
        if (contrast > strongest) {
            strongest = contrast;
            mark = picture.pixelColor(place);
        }
    });
    return mark;
}

/// The strongest contrast in the picture with the ground.
inline double strongest(const QImage &picture, const QColor &ground) { return contrast(mark(picture, ground), ground); }

/// Whether a colour lies between two others, but for what rounding and smooth edges make of it.
inline bool isBetween(const QColor &colour, const QColor &one, const QColor &other)
{
    constexpr int tolerance = 5;
    const auto within = [](int channel, int bound, int otherBound) {
        return channel >= std::min(bound, otherBound) - tolerance && channel <= std::max(bound, otherBound) + tolerance;
    };
    return within(colour.red(), one.red(), other.red()) && within(colour.green(), one.green(), other.green()) &&
           within(colour.blue(), one.blue(), other.blue());
}

inline bool isNear(const QColor &colour, const QColor &other) { return isBetween(colour, other, other); }

/// What a colour that may be transparent makes of the one below it.
inline QColor over(const QColor &upper, const QColor &lower)
{
    const auto channel = [&](int above, int below) { return qRound(below + (above - below) * double{upper.alphaF()}); };
    return {
        channel(upper.red(), lower.red()), channel(upper.green(), lower.green()), channel(upper.blue(), lower.blue())};
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
