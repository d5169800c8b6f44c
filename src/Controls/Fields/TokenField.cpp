// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Controls/Fields/TokenField.h"

#include <QAccessibleWidget>
#include <QKeyEvent>

namespace {

/// A password field without a text interface: the announcements of typed characters have nowhere to go then.
class AccessibleTokenField : public QAccessibleWidget {
public:
    explicit AccessibleTokenField(TokenField *field) : QAccessibleWidget(field, QAccessible::EditableText) {}

    static QAccessibleInterface *make(const QString &, QObject *object)
    {
        auto *const field = qobject_cast<TokenField *>(object);
        return field ? new AccessibleTokenField(field) : nullptr;
    }

    QString text(QAccessible::Text kind) const override
    {
        const QString own = QAccessibleWidget::text(kind);
        const bool wanted = kind == QAccessible::Description && own.isEmpty();
        return wanted ? static_cast<const TokenField *>(widget())->placeholderText() : own; // as other fields have it
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.passwordEdit = true;
        state.editable = true;
        return state;
    }
};

} // namespace

TokenField::TokenField()
{
    static const bool installed = (QAccessible::installFactory(&AccessibleTokenField::make), true);
    Q_UNUSED(installed)
    setEchoMode(Password);
    setInputMethodHints(Qt::ImhHiddenText | Qt::ImhSensitiveData | Qt::ImhNoPredictiveText | Qt::ImhNoAutoUppercase);
}

QVariant TokenField::inputMethodQuery(Qt::InputMethodQuery query) const
{
    switch (query) {
    case Qt::ImSurroundingText:
    case Qt::ImTextBeforeCursor:
    case Qt::ImTextAfterCursor:
    case Qt::ImCurrentSelection:
        return QString();
    default:
        return QLineEdit::inputMethodQuery(query);
    }
}

void TokenField::keyPressEvent(QKeyEvent *event)
{
    // Nothing of a masked text reaches the clipboard, so cutting would only delete.
    if (event->matches(QKeySequence::Cut))
        return;
    QLineEdit::keyPressEvent(event);
}
