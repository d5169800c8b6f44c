// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Controls/Labels/MarkedLabel.h"

#include "Look/SystemSymbol.h"

#include <QEvent>
#include <QPainter>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int gapBesideBullet = 8;
constexpr int leastGapBesideSymbol = 4;
constexpr QChar bullet = u'•';

/// The width of a bullet and of the gap beside it, in lines of the body style.
int bulletIndent() { return QFontMetrics(textFont(TextStyle::Body)).horizontalAdvance(bullet) + gapBesideBullet; }

} // namespace

MarkedLabel::MarkedLabel(const QString &text, TextStyle style) : TextLabel(text, style)
{
    setWordWrap(true);
    setAlignment(Qt::AlignLeft | Qt::AlignTop);
}

void MarkedLabel::makeRoom() { setContentsMargins(textLeft(), 0, 0, 0); }

void MarkedLabel::changeEvent(QEvent *event)
{
    TextLabel::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        makeRoom();
}

void MarkedLabel::paintEvent(QPaintEvent *event)
{
    TextLabel::paintEvent(event);
    QRect place(QPoint(0, 0), markSize());
    place.moveTop((fontMetrics().height() - place.height()) / 2);
    QPainter painter(this);
    paintMark(painter, place);
}

BulletLabel::BulletLabel(const QString &text) : MarkedLabel(text, TextStyle::Body) { makeRoom(); }

int BulletLabel::textLeft() const { return bulletIndent(); }

QSize BulletLabel::markSize() const { return {fontMetrics().horizontalAdvance(bullet), fontMetrics().height()}; }

void BulletLabel::paintMark(QPainter &painter, const QRect &place) const
{
    painter.setPen(Theme::colour(Theme::Ink::Secondary, palette()));
    painter.drawText(place, Qt::AlignLeft | Qt::AlignTop, QString(bullet));
}

BulletSpace::BulletSpace() { setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed); }

QSize BulletSpace::sizeHint() const { return {bulletIndent(), 0}; }

bool BulletSpace::event(QEvent *event)
{
    if (event->type() == QEvent::ApplicationFontChange)
        updateGeometry();
    return QWidget::event(event);
}

SymbolLabel::SymbolLabel(QString symbolName, const QString &text, TextStyle style)
    : MarkedLabel(text, style), m_symbolName(std::move(symbolName))
{
    makeRoom();
}

QSize SymbolLabel::markSize() const
{
    const int side = std::min(fontMetrics().height(), textLeft() - leastGapBesideSymbol);
    return {side, side};
}

int SymbolLabel::textLeft() const { return lineIndent + bulletIndent(); }

void SymbolLabel::paintMark(QPainter &painter, const QRect &place) const
{
    SystemSymbol::paint(painter, m_symbolName, place, Theme::colour(Theme::Ink::Primary, palette()));
}
