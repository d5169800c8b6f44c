// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Platform/Linux/StatusDotImage.h"

#include <QPainter>

#include <algorithm>

namespace {

struct Colours {
    QColor fill;
    QColor rim;
};

Colours coloursOf(StatusDot dot)
{
    switch (dot) {
    case StatusDot::Green:
        return {.fill = QColor(0x34, 0xc7, 0x59), .rim = QColor(0x1a, 0x7a, 0x35)};
    case StatusDot::Red:
        return {.fill = QColor(0xff, 0x3b, 0x30), .rim = QColor(0xb0, 0x17, 0x10)};
    case StatusDot::White:
        break;
    }
    return {.fill = QColor(0xff, 0xff, 0xff), .rim = QColor(0x60, 0x60, 0x66)};
}

} // namespace

QImage statusDotImage(StatusDot dot, int size)
{
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    const Colours colours = coloursOf(dot);
    const qreal rim = std::max(1.5, size / 14.0);
    const qreal margin = size / 10.0 + rim / 2;

    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colours.rim, rim));
    painter.setBrush(colours.fill);
    painter.drawEllipse(QRectF(0, 0, size, size).adjusted(margin, margin, -margin, -margin));
    painter.end();
    return image.convertToFormat(QImage::Format_ARGB32);
}
