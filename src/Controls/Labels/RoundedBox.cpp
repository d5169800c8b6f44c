// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Controls/Labels/RoundedBox.h"

#include <QPainter>

void RoundedBox::paintEvent(QPaintEvent *)
{
    const Theme::BoxColours colours = Theme::boxColours(m_look, palette());
    constexpr double half = Theme::boxStrokeWidth / 2.0; // the stroke lies inside the box
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colours.stroke, Theme::boxStrokeWidth));
    painter.setBrush(colours.fill);
    painter.drawRoundedRect(
        QRectF(rect()).adjusted(half, half, -half, -half), Theme::boxCornerRadius, Theme::boxCornerRadius);
}
