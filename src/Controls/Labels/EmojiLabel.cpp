// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Controls/Labels/EmojiLabel.h"

#include <QPainter>
#include <QTextLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr QChar emojiSelector = u'\uFE0F';

/// The characters that ask for an emoji, each with the selector behind it.
QList<QTextLayout::FormatRange> emojiRanges(const QString &text)
{
    QTextCharFormat emoji;
    emoji.setFontFamilies({u"emoji"_s}); // the system's, whatever its name
    emoji.setFontWeight(QFont::Normal);
    QList<QTextLayout::FormatRange> ranges;
    for (qsizetype at = text.indexOf(emojiSelector, 1); at > 0; at = text.indexOf(emojiSelector, at + 1)) {
        const int length = text[at - 1].isLowSurrogate() ? 3 : 2;
        ranges.append({.start = static_cast<int>(at) + 1 - length, .length = length, .format = emoji});
    }
    return ranges;
}

} // namespace

void EmojiLabel::paintEvent(QPaintEvent *)
{
    QTextLayout layout(text(), font());
    layout.setFormats(emojiRanges(text()));
    double baseline = fontMetrics().ascent(); // the emoji font's own is lower
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width());
        line.setPosition({0.0, baseline - line.ascent()});
        baseline += fontMetrics().lineSpacing();
    }
    layout.endLayout();
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    layout.draw(&painter, {});
}
