// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Controls/Labels/TextLabel.h"

#include "Controls/AccessibleRole.h"

#include <QEvent>
#include <QGuiApplication>

namespace {

bool isHeading(TextStyle style)
{
    return style == TextStyle::Title || style == TextStyle::Title2 || style == TextStyle::Headline;
}

} // namespace

TextLabel::TextLabel(const QString &text, TextStyle style, Theme::Ink ink)
    : m_style(style), m_ink(ink), m_weight(textFont(style).weight())
{
    if (isHeading(style))
        AccessibleRole::give(this, QAccessible::Heading);
    setTextFormat(Qt::PlainText); // Qt's default would render a message of the service as HTML
    setText(text);
    restyle();
    recolour();
}

void TextLabel::setWeight(QFont::Weight weight)
{
    m_weight = weight;
    restyle();
}

bool TextLabel::event(QEvent *event)
{
    if (event->type() == QEvent::ApplicationFontChange)
        restyle();
    return QLabel::event(event);
}

void TextLabel::changeEvent(QEvent *event)
{
    QLabel::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        recolour();
}

void TextLabel::restyle()
{
    QFont font = textFont(m_style);
    font.setWeight(m_weight);
    setFont(font);
}

void TextLabel::recolour()
{
    if (m_ink == Theme::Ink::Primary)
        return;
    // The label's own palette holds the colour that was set last, so the surroundings are asked.
    const QPalette surroundings = parentWidget() ? parentWidget()->palette() : QGuiApplication::palette();
    const QColor colour = Theme::colour(m_ink, surroundings);
    if (palette().color(foregroundRole()) == colour)
        return;
    QPalette own;
    own.setColor(QPalette::WindowText, colour);
    setPalette(own);
}
