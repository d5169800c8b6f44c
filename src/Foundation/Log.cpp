// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Foundation/Log.h"

#include <cstdio>

using namespace Qt::StringLiterals;

void logLine(const QString &message)
{
    QString line = message;
    line.replace(u'\r', u' ').replace(u'\n', u' ');
    const QByteArray bytes = "Vantelo: " + line.toUtf8() + '\n';
    // A closed standard output is no reason to fail; the line is simply lost.
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stdout);
    std::fflush(stdout);
}
