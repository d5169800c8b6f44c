// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QLineEdit>

#include <functional>

/// Keeps a field and a stored text alike, whoever changes which. What the user does to the field is stored at once.
/// What somebody else stored meanwhile is never overwritten unseen: it appears, and what was just typed goes into it.
class StoredText : public QObject {
    Q_OBJECT

public:
    /// Belongs to the field.
    StoredText(QLineEdit *field, std::function<QString()> stored, std::function<void(const QString &)> store);

    /// Shows what is stored by now. The cursor stays, as far as the text goes; at the end it stays at the end.
    void catchUp();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void storeEdit(const QString &edited);
    void show(const QString &text, qsizetype cursor);

    QLineEdit *m_field;
    std::function<QString()> m_stored;
    std::function<void(const QString &)> m_store;
    QString m_shown;            ///< and stored, as far as is known
    bool m_isComposing = false; ///< an input method; a new text would take away what it has begun
};
