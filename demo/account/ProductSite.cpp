// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "ProductSite.h"

#include "Update/RemoteUpdate.h"

using namespace Qt::StringLiterals;

namespace {

constexpr QByteArrayView downloadPage = "<!DOCTYPE html><html lang=\"en\"><title>Vantelo demo</title>"
                                        "<p>A release would be downloaded here.</p></html>\n";

RemoteUpdate newestRelease(const QString &origin, double minutes)
{
    const QString downloads = origin + u"/download"_s;
    if (minutes < ProductSite::releaseMinute)
        return {.version = QStringLiteral(VANTELO_VERSION), .download_url = downloads, .release_notes = {}};
    return {
        .version = QStringLiteral(VANTELO_NEXT_VERSION),
        .download_url = downloads,
        .release_notes = u"A made-up release, to show what an update looks like."_s,
    };
}

} // namespace

ServedReply ProductSite::answer(const QUrl &url, const QString &origin, double minutes)
{
    if (url.path() == u"/version.json"_s)
        return {.body = newestRelease(origin, minutes).toJson()};
    if (url.path() == u"/download"_s)
        return {.contentType = "text/html; charset=UTF-8", .body = downloadPage.toByteArray()};
    return {.status = 404, .contentType = "text/plain; charset=UTF-8", .body = "There is nothing here.\n"};
}
