// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Controls/Boxes/RoundedBox.h"

#include <QPainter>

void RoundedBox::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    paint(painter, rect(), Theme::boxColours(m_look, palette()));
}

void RoundedBox::paint(QPainter &painter, const QRect &box, const Theme::BoxColours &colours)
{
    constexpr double half = Theme::boxStrokeWidth / 2.0; // the stroke lies inside the box
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colours.stroke, Theme::boxStrokeWidth));
    painter.setBrush(colours.fill);
    painter.drawRoundedRect(
        QRectF(box).adjusted(half, half, -half, -half), Theme::boxCornerRadius, Theme::boxCornerRadius);
}
