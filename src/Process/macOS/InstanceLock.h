// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <optional>

/// A file that one process at a time holds. The kernel takes it back when the process dies, however it dies.
class InstanceLock {
public:
    explicit InstanceLock(const QString &path);
    ~InstanceLock();
    Q_DISABLE_COPY_MOVE(InstanceLock)

    /// The process that holds it in place of this one, 0 where it does not say who it is. Nothing where this one holds
    /// it, or where there can be no lock at all: that is no reason not to run.
    std::optional<qint64> otherHolder() const { return m_other; }

    /// Where this build's lock lies, in the user's own folder.
    static QString usualPath();

private:
    int m_file;
    std::optional<qint64> m_other;
};
