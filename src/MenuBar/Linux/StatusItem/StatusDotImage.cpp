// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "MenuBar/Linux/StatusItem/StatusDotImage.h"

#include <algorithm>
#include <cmath>

// Drawn pixel by pixel: two circles are no work for QPainter, whose engine would be loaded for nothing else until a
// window opens.

namespace {

struct Colours {
    QRgb fill;
    QRgb rim;
};

Colours coloursOf(StatusDot dot)
{
    switch (dot) {
    case StatusDot::Green:
        return {.fill = 0xff34c759, .rim = 0xff1a7a35};
    case StatusDot::Red:
        return {.fill = 0xffff3b30, .rim = 0xffb01710};
    case StatusDot::White:
        break;
    }
    return {.fill = 0xffffffff, .rim = 0xff606066};
}

/// The part of a pixel, from 0 to 1, that a circle covers, as if the circle's edge were straight and along the pixel's.
qreal covered(qreal radius, qreal distance) { return std::clamp(radius - distance + 0.5, 0.0, 1.0); }

/// A colour on the way from one to the other.
QRgb between(QRgb from, QRgb to, qreal share)
{
    if (share == 0 || share == 1) // most pixels
        return share == 0 ? from : to;
    const auto channel = [share](int first, int last) { return qRound(first + share * (last - first)); };
    return qRgba(channel(qRed(from), qRed(to)), channel(qGreen(from), qGreen(to)), channel(qBlue(from), qBlue(to)),
        channel(qAlpha(from), qAlpha(to)));
}

} // namespace

QImage statusDotImage(StatusDot dot, int size)
{
    const auto [fill, rim] = coloursOf(dot);
    const QRgb outside = rim & RGB_MASK; // transparent
    const qreal radius = 0.4 * size;
    const qreal innerRadius = radius - std::max(1.5, size / 14.0);
    const qreal middle = (size - 1) / 2.0; // as counted from the middle of the first pixel

    QImage image(size, size, QImage::Format_ARGB32);
    for (int y = 0; y < size; ++y) {
        auto *const line = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < size; ++x) {
            const qreal distance = std::sqrt((x - middle) * (x - middle) + (y - middle) * (y - middle));
            const QRgb disc = between(outside, rim, covered(radius, distance));
            line[x] = between(disc, fill, covered(innerRadius, distance));
        }
    }
    return image;
}
