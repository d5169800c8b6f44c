// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Controls/Boxes/TitledBox.h"

#include "Controls/AccessibleRole.h"
#include "Controls/Boxes/RoundedBox.h"

#include <QEvent>
#include <QPainter>

namespace {

constexpr int gapBelowTitle = 4;

} // namespace

TitledBox::TitledBox(const QString &title) : m_title(title)
{
    AccessibleRole::give(this, QAccessible::Grouping);
    setAccessibleName(title);
    makeRoom();
}

bool TitledBox::event(QEvent *event)
{
    if (event->type() == QEvent::FontChange)
        makeRoom();
    return QWidget::event(event);
}

void TitledBox::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setPen(Theme::colour(Theme::Ink::Primary, palette()));
    painter.drawText(0, fontMetrics().ascent(), m_title);
    RoundedBox::paint(painter, rect().adjusted(0, boxTop(), 0, 0), Theme::boxColours(Theme::Box::Group, palette()));
}

int TitledBox::boxTop() const { return fontMetrics().height() + gapBelowTitle; }
