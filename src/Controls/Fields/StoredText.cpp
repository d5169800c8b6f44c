// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Controls/Fields/StoredText.h"

#include <QInputMethodEvent>

#include <algorithm>
#include <utility>

namespace {

/// What an edit has put in front of the cursor; nothing where it only took away.
QString typed(const QString &before, const QString &after, qsizetype cursor)
{
    const qsizetype behind = after.size() - cursor;
    const qsizetype limit = std::min(cursor, before.size() - behind);
    qsizetype begin = 0;
    while (begin < limit && before[begin] == after[begin])
        ++begin;
    return after.sliced(begin, cursor - begin);
}

} // namespace

StoredText::StoredText(QLineEdit *field, std::function<QString()> stored, std::function<void(const QString &)> store)
    : QObject(field), m_field(field), m_stored(std::move(stored)), m_store(std::move(store))
{
    catchUp();
    connect(field, &QLineEdit::textChanged, this, &StoredText::storeEdit);
    field->installEventFilter(this);
}

void StoredText::catchUp()
{
    const QString stored = m_isComposing ? m_shown : m_stored();
    if (stored == m_shown)
        return;
    const bool atEnd = m_field->cursorPosition() == m_shown.size();
    show(stored, atEnd ? stored.size() : m_field->cursorPosition());
}

bool StoredText::eventFilter(QObject *watched, QEvent *event)
{
    const bool wasComposing = m_isComposing;
    if (event->type() == QEvent::InputMethod)
        m_isComposing = !static_cast<QInputMethodEvent *>(event)->preeditString().isEmpty();
    else if (event->type() == QEvent::FocusOut)
        m_isComposing = false;
    if (wasComposing && !m_isComposing)
        QMetaObject::invokeMethod(this, &StoredText::catchUp, Qt::QueuedConnection); // once the field has its text
    return QObject::eventFilter(watched, event);
}

void StoredText::storeEdit(const QString &edited)
{
    if (edited == m_shown)
        return;
    const qsizetype cursor = m_field->cursorPosition();
    const QString before = std::exchange(m_shown, edited);
    if (const QString newer = m_stored(); newer != before) {
        const QString text = typed(before, edited, cursor);
        const qsizetype place = cursor == edited.size() ? newer.size() : std::min(cursor - text.size(), newer.size());
        show(newer.first(place) + text + newer.sliced(place), place + text.size());
    }
    m_store(m_shown);
}

void StoredText::show(const QString &text, qsizetype cursor)
{
    m_shown = text;
    m_field->setText(text);
    m_field->setCursorPosition(static_cast<int>(cursor));
}
