// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Controls/Labels/CodeBlock.h"

#include "Look/TextStyle.h"

#include <QEvent>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QTextBlock>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

bool isContinued(const QTextBlock &line) { return line.isValid() && line.text().endsWith(u'\\'); }

/// What a shell has to read of the line: a continuation without its indent, which would stand amid a word.
int runnableStart(const QTextBlock &line)
{
    const QString text = line.text();
    const auto *const word = std::ranges::find_if(text, [](QChar character) { return character != u' '; });
    return isContinued(line.previous()) ? static_cast<int>(word - text.begin()) : 0;
}

/// Gives away what is selected as it can be run: to the clipboard, to the primary selection and by dragging.
class CommandText : public QPlainTextEdit {
public:
    using QPlainTextEdit::QPlainTextEdit;

protected:
    QMimeData *createMimeDataFromSelection() const override
    {
        const int start = textCursor().selectionStart();
        const int end = textCursor().selectionEnd();
        QStringList lines;
        for (QTextBlock line = document()->findBlock(start); line.isValid() && line.position() <= end;
             line = line.next()) {
            const int from = std::max(start - line.position(), runnableStart(line));
            lines << line.text().mid(from, std::max(end - line.position() - from, 0));
        }
        auto *const copied = new QMimeData;
        copied->setText(lines.join(u'\n'));
        return copied;
    }
};

} // namespace

CodeBlock::CodeBlock(const QString &command) : RoundedBox(Theme::Box::Code), m_text(new CommandText(command))
{
    m_text->setReadOnly(true);
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_text->setTabChangesFocus(true);
    m_text->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_text->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_text->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_text->setFrameShape(QFrame::NoFrame);
    m_text->viewport()->setAutoFillBackground(false); // the box shows through
    m_text->document()->setDocumentMargin(Theme::boxPadding);
    m_text->setAccessibleName(u"Command"_s);
    auto *const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_text);
    restyle();
}

bool CodeBlock::event(QEvent *event)
{
    if (event->type() == QEvent::ApplicationFontChange)
        restyle();
    return RoundedBox::event(event);
}

void CodeBlock::restyle()
{
    m_text->setFont(monospacedTextFont(TextStyle::Caption));
    // The last line's rectangle has the padding below; one pixel less and the editor would scroll by a line.
    double height = Theme::boxPadding + 1.0;
    for (QTextBlock line = m_text->document()->begin(); line.isValid(); line = line.next())
        height += m_text->document()->documentLayout()->blockBoundingRect(line).height();
    m_text->setFixedHeight(static_cast<int>(std::ceil(height)));
}
