// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Preferences/PreferenceStorage.h"

#include <QDeadlineTimer>
#include <QTimer>

/// The user's preferences, in the place where the system keeps them. Nothing is cached: every read sees what
/// another program wrote, every write reaches the disk at once and whole.
///
/// A store that cannot be written is told on standard output, once until it can be written again; the values meanwhile
/// live on in memory. While another program is writing, ours follows within a second, or counts as one that failed.
class DefaultsStore {
public:
    DefaultsStore();
    ~DefaultsStore();
    Q_DISABLE_COPY_MOVE(DefaultsStore)

    /// The stored value, or an invalid one where the key is absent.
    QVariant value(const QString &key) const;
    void setValue(const QString &key, const QVariant &value);

    /// Calls soon after what is stored may have changed, by whomever, while the returned object lives.
    std::unique_ptr<QObject> watch(std::function<void()> changed) const;

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
    void trySaving();
    void tell(bool failed);

    std::unique_ptr<PreferenceStorage> m_storage;
    QTimer m_nextTry;
    QDeadlineTimer m_patience;
    bool m_inTransaction = false;
    bool m_writeFailed = false;
};
