// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Controls/Labels/ResultRow.h"

#include "Controls/AccessibleRole.h"
#include "Look/SystemSymbol.h"
#include "Look/TextStyle.h"

#include <QEvent>
#include <QPainter>
#include <QTextLayout>

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

constexpr int gapBesideSymbol = 6;
constexpr int preferredTextWidth = 300;
constexpr qsizetype maximumLines = 2;
// More never fits into two lines; a message may be as long as the service pleases.
constexpr qsizetype maximumShownLength = 1000;

QTextOption wrapping()
{
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    return option;
}

bool isLineBreak(QChar character)
{
    return character == u'\n' || character == u'\r' || character == QChar::LineSeparator ||
           character == QChar::ParagraphSeparator;
}

/// The text without the blank lines at its ends. What stands before a line's first word stays.
QString withoutBlankEnds(const QString &text)
{
    const auto isVisible = [](QChar character) { return !character.isSpace(); };
    const auto *const word = std::ranges::find_if(text, isVisible);
    if (word == text.end())
        return {};
    const auto *const end = std::find_if(text.rbegin(), std::make_reverse_iterator(word), isVisible).base();
    const auto lineBreak = std::find_if(std::make_reverse_iterator(word), text.rend(), isLineBreak);
    return QString(lineBreak.base(), end - lineBreak.base());
}

} // namespace

ResultRow::ResultRow(QString symbolName, QString meaning, Theme::Ink ink, int gapBelow)
    : m_symbolName(std::move(symbolName)), m_meaning(std::move(meaning)), m_ink(ink)
{
    AccessibleRole::give(this, QAccessible::Notification); // spoken when it appears
    setContentsMargins(0, 0, 0, gapBelow);
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    setFont(textFont(TextStyle::Caption));
    hide();
}

void ResultRow::announce(const QString &text)
{
    m_text = text;
    m_visibleText = withoutBlankEnds(text);
    setAccessibleName(m_visibleText.isEmpty() ? m_meaning : m_visibleText);
    updateGeometry();
    updateToolTip();
    update();
    show();
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

int ResultRow::heightForWidth(int width) const
{
    const auto count = static_cast<int>(std::max<qsizetype>(shown(width).lines.size(), 1));
    return count * fontMetrics().lineSpacing() + contentsMargins().bottom();
}

QSize ResultRow::sizeHint() const
{
    const int width = textLeft() + preferredTextWidth;
    return {width, heightForWidth(width)};
}

QSize ResultRow::minimumSizeHint() const { return {textLeft(), fontMetrics().lineSpacing()}; }

bool ResultRow::event(QEvent *event)
{
    if (event->type() == QEvent::ApplicationFontChange) {
        setFont(textFont(TextStyle::Caption));
        updateGeometry();
    }
    return QWidget::event(event);
}

void ResultRow::paintEvent(QPaintEvent *)
{
    const QColor colour = Theme::colour(m_ink, palette());
    QPainter painter(this);
    SystemSymbol::paint(painter, m_symbolName, QRectF(0.0, 0.0, symbolSide(), symbolSide()), colour);
    painter.setPen(colour);
    int baseline = fontMetrics().ascent();
    for (const QString &line : shown(width()).lines) {
        painter.drawText(textLeft(), baseline, line);
        baseline += fontMetrics().lineSpacing();
    }
}

void ResultRow::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    updateToolTip();
}

void ResultRow::updateToolTip()
{
    const QString whole = m_visibleText.first(std::min(m_visibleText.size(), maximumShownLength));
    setToolTip(shown(width()).cut ? Qt::convertFromPlainText(whole, Qt::WhiteSpaceNormal) : QString());
}

/// What stands on screen at this width.
ResultRow::Shown ResultRow::shown(int width) const
{
    QString text = m_visibleText.first(std::min(m_visibleText.size(), maximumShownLength));
    text.replace(u'\n', QChar::LineSeparator);
    QTextLayout layout(text, font());
    layout.setTextOption(wrapping());
    const int textWidth = std::max(width - textLeft(), 1);
    Shown shown;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(textWidth);
        if (shown.lines.size() == maximumLines - 1) {
            const QString rest = text.mid(line.textStart()).replace(QChar::LineSeparator, u' ');
            shown.lines.append(fontMetrics().elidedText(rest, Qt::ElideRight, textWidth));
            shown.cut = shown.lines.constLast() != rest;
            break;
        }
        shown.lines.append(text.mid(line.textStart(), line.textLength()));
    }
    layout.endLayout();
    return shown;
}

int ResultRow::textLeft() const { return symbolSide() + gapBesideSymbol; }
