// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QList>
#include <QTemporaryFile>

#include <cstdio>
#include <unistd.h>

/// Collects what the process writes to standard output while the object lives, and passes it on at the end:
/// a failed check must not go unseen.
class OutputCapture {
public:
    OutputCapture()
    {
        std::fflush(stdout);
        if (!m_file.open())
            qFatal("cannot capture the output");
        m_original = ::dup(STDOUT_FILENO);
        ::dup2(m_file.handle(), STDOUT_FILENO);
    }
    ~OutputCapture()
    {
        const QByteArray collected = text();
        ::dup2(m_original, STDOUT_FILENO);
        ::close(m_original);
        std::fwrite(collected.constData(), 1, static_cast<std::size_t>(collected.size()), stdout);
    }
    Q_DISABLE_COPY_MOVE(OutputCapture)

    /// The program's own diagnostics among the lines written, which may also be the test framework's.
    QByteArray diagnostics()
    {
        QByteArray own;
        const QList<QByteArray> lines = text().split('\n');
        for (const QByteArray &line : lines) {
            if (line.startsWith("Vantelo: "))
                own += line + '\n';
        }
        return own;
    }

    QByteArray text()
    {
        std::fflush(stdout);
        m_file.seek(0);
        return m_file.readAll();
    }

private:
    QTemporaryFile m_file;
    int m_original = -1;
};
