// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QTemporaryFile>

#include <cstdio>
#include <unistd.h>

/// Collects what the process writes to standard output while the object lives.
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
        std::fflush(stdout);
        ::dup2(m_original, STDOUT_FILENO);
        ::close(m_original);
    }
    Q_DISABLE_COPY_MOVE(OutputCapture)

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
