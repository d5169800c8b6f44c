// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "ReleaseNotes.h"

#include <QStringList>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// The lines below the heading of a version, up to the next one's.
QStringList section(const QStringList &lines, const QString &version)
{
    const auto isHeading = [](const QString &line) { return line.startsWith(u"## "_s); };
    const auto isItsHeading = [&](const QString &line) {
        return isHeading(line) && line.section(u' ', 1, 1) == version;
    };
    const auto heading = std::find_if(lines.begin(), lines.end(), isItsHeading);
    if (heading == lines.end())
        return {};
    return {heading + 1, std::find_if(heading + 1, lines.end(), isHeading)};
}

} // namespace

std::optional<QString> releaseNotes(const QString &changelog, const QString &version)
{
    const QStringList lines = changelog.split(u'\n');
    QStringList found = section(lines, version);
    if (found.isEmpty())
        found = section(lines, u"Unreleased"_s);
    QString notes;
    for (const QString &line : std::as_const(found)) {
        if (line.startsWith(u"  "_s) && !notes.isEmpty()) { // goes on with the line above
            notes.chop(1);
            notes += u' ' + line.trimmed() + u'\n';
        } else {
            notes += (line.startsWith(u"### "_s) ? line.sliced(4) : line) + u'\n';
        }
    }
    notes = notes.trimmed();
    return notes.isEmpty() ? std::nullopt : std::optional(notes.remove(u'`'));
}
