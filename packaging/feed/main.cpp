// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

// Writes what the product's web site serves as /version.json when this version is out.

#include "ReleaseNotes.h"
#include "Update/RemoteUpdate.h"

#include <QFile>

#include <cstdio>

using namespace Qt::StringLiterals;

int main()
{
    QFile changelog(QStringLiteral(VANTELO_CHANGELOG));
    if (!changelog.open(QIODevice::ReadOnly))
        return 1;
    const QString version = QStringLiteral(VANTELO_VERSION);
    const RemoteUpdate release{
        .version = version,
        .download_url = QStringLiteral(VANTELO_WEBSITE "/download"),
        .release_notes = releaseNotes(QString::fromUtf8(changelog.readAll()), version),
    };
    return std::puts(release.toJson().constData()) < 0 ? 1 : 0;
}
