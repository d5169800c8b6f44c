// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QSettings>
#include <QString>
#include <QVariant>

#include <memory>

/// The user's preferences, in the place where the system keeps them. Nothing is cached: every read sees what
/// another program wrote, every write reaches the disk at once and whole.
///
/// The file holds the access token, so the file and its lock are readable and writable by the user alone from
/// their first byte, and are made so when they are found wider. A store that cannot be written is told on
/// standard output, once until it can be written again; the values meanwhile live on in memory.
class DefaultsStore {
public:
    DefaultsStore();

    /// The stored value, or an invalid one where the key is absent.
    QVariant value(const QString &key) const;
    void setValue(const QString &key, const QVariant &value);

    /// Reads and writes while it lives are one: they see the store as it was at its begin, and what was written
    /// reaches the disk at its end, together. Short, and without another one inside.
    class Transaction {
    public:
        explicit Transaction(DefaultsStore &store);
        ~Transaction();
        Q_DISABLE_COPY_MOVE(Transaction)

    private:
        DefaultsStore &m_store;
    };

private:
    void save();

    std::unique_ptr<QSettings> m_settings;
    bool m_inTransaction = false;
    bool m_writeFailed = false;
};
