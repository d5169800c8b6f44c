// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Controls/Fields/ProgressButton.h"

#include <QPainter>
#include <QTimerEvent>

#include <chrono>

namespace {

constexpr int spokes = 8;
constexpr int gapBesideWheel = 4; // on top of the style's own

QPixmap wheel(QSize size, int turn, qreal devicePixelRatio, QColor colour)
{
    const int side = size.height();
    QPixmap pixmap((QSizeF(size) * devicePixelRatio).toSize());
    pixmap.setDevicePixelRatio(devicePixelRatio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(side / 2.0, side / 2.0);
    painter.rotate(360.0 * turn / spokes);
    for (int spoke = 0; spoke < spokes; ++spoke) {
        colour.setAlphaF(static_cast<float>(1 + spoke) / spokes); // a tail that fades
        painter.setPen(QPen(colour, side / 9.0, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(QPointF(side * 0.22, 0.0), QPointF(side * 0.42, 0.0));
        painter.rotate(360.0 / spokes);
    }
    return pixmap;
}

} // namespace

void ProgressButton::setSpinning(bool spinning)
{
    using namespace std::chrono_literals;
    m_spinning = spinning;
    if (!spinning) {
        m_timer.stop();
        setIcon({});
        return;
    }
    const int side = fontMetrics().ascent(); // lower than the text, so that the button keeps its height
    setIconSize({side + gapBesideWheel, side});
    m_turn = 0;
    drawWheel();
    m_timer.start(std::chrono::milliseconds(100ms).count(), this);
}

void ProgressButton::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_timer.timerId()) {
        QPushButton::timerEvent(event);
        return;
    }
    m_turn = (m_turn + 1) % spokes;
    drawWheel();
}

void ProgressButton::drawWheel()
{
    // As the text beside it, and the button is disabled while it spins.
    const QColor colour = palette().color(QPalette::Disabled, QPalette::ButtonText);
    const QPixmap drawn = wheel(iconSize(), m_turn, devicePixelRatioF(), colour);
    QIcon icon(drawn);
    icon.addPixmap(drawn, QIcon::Disabled); // or the style would pale it once more
    setIcon(icon);
}
