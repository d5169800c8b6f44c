// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>

/// Keeps other programs from writing a file while this lives, the way QSettings and its QLockFile do: a lock file
/// says who writes, and the kernel's lock on it says whether he lives. Here the kernel alone decides, so what a killed
/// program left is taken over. It is not flushed to disk: after a power cut it means nothing.
class FileLock {
public:
    enum class State {
        Held,
        Taken,      ///< by another program, for as long as that may be
        Impossible, ///< no such file can be made
    };

    /// Tries once and waits for nobody.
    explicit FileLock(const QString &path);
    ~FileLock();
    Q_DISABLE_COPY_MOVE(FileLock)

    State state() const { return m_state; }

private:
    QByteArray m_path;
    int m_descriptor = -1;
    State m_state = State::Impossible;
};
