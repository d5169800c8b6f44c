// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Controls/Labels/LinkLabel.h"

#include "Controls/AccessibleRole.h"
#include "Look/TextStyle.h"
#include "Look/Theme.h"

#include <QDesktopServices>
#include <QEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionFocusRect>

LinkLabel::LinkLabel(const QString &text, const QString &address) : m_destination(address, QUrl::StrictMode)
{
    if (!m_destination.isValid())
        qFatal("a link of the guide is no valid address");
    AccessibleRole::give(this, QAccessible::Link);
    setText(text);
    setAccessibleName(text);
    setToolTip(address);
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    restyle();
    connect(this, &QAbstractButton::clicked, this, [this] { QDesktopServices::openUrl(m_destination); });
}

QSize LinkLabel::sizeHint() const { return fontMetrics().size(Qt::TextSingleLine, text()); }

bool LinkLabel::event(QEvent *event)
{
    if (event->type() == QEvent::ApplicationFontChange)
        restyle();
    return QAbstractButton::event(event);
}

void LinkLabel::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        click();
    else
        QAbstractButton::keyPressEvent(event);
}

void LinkLabel::paintEvent(QPaintEvent *)
{
    QFont underlined = font();
    underlined.setUnderline(true);
    QPainter painter(this);
    painter.setFont(underlined);
    painter.setPen(Theme::colour(Theme::Ink::Link, palette()));
    painter.drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, text());
    if (!hasFocus())
        return;
    QStyleOptionFocusRect focus;
    focus.initFrom(this);
    style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, &painter, this);
}

void LinkLabel::restyle()
{
    setFont(textFont(TextStyle::Body));
    updateGeometry();
}
