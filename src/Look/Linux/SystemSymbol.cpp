// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Look/SystemSymbol.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>

using namespace Qt::StringLiterals;

namespace {

// Icon themes have no such set of symbols, so they are drawn here: as paths, on a square of this side.
constexpr double side = 100.0;

QPainterPath strokes(std::initializer_list<QPolygonF> lines)
{
    QPainterPath path;
    for (const QPolygonF &line : lines)
        path.addPolygon(line);
    QPainterPathStroker stroker;
    stroker.setWidth(10.0);
    stroker.setCapStyle(Qt::RoundCap);
    stroker.setJoinStyle(Qt::RoundJoin);
    return stroker.createStroke(path).simplified();
}

QPainterPath digit(QChar digit)
{
    QFont font = QGuiApplication::font();
    font.setPixelSize(68);
    font.setWeight(QFont::Bold);
    QPainterPath path;
    path.addText(0.0, 0.0, font, digit);
    path.translate(QPointF(side / 2.0, side / 2.0) - path.boundingRect().center());
    return path.simplified(); // outlines of variable fonts overlap
}

QPainterPath cutOut(const QString &name)
{
    if (name == u"xmark"_s)
        return strokes({{{33.0, 33.0}, {67.0, 67.0}}, {{67.0, 33.0}, {33.0, 67.0}}});
    if (name == u"checkmark"_s)
        return strokes({{{29.0, 53.0}, {44.0, 69.0}, {71.0, 33.0}}});
    if (name.size() == 1 && name.front() >= u'1' && name.front() <= u'5')
        return digit(name.front());
    qFatal("no system symbol of this name");
}

} // namespace

void SystemSymbol::paint(QPainter &painter, const QString &name, const QRectF &square, const QColor &tint)
{
    static const QString suffix = u".circle.fill"_s;
    QPainterPath circle;
    circle.addEllipse(QRectF(2.0, 2.0, side - 4.0, side - 4.0));
    const QString kind = name.endsWith(suffix) ? name.chopped(suffix.size()) : QString();
    const QPainterPath symbol = circle.subtracted(cutOut(kind));

    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(square.topLeft());
    painter.scale(square.width() / side, square.height() / side);
    painter.fillPath(symbol, tint);
    painter.restore();
}
