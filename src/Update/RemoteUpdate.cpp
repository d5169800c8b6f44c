// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Update/RemoteUpdate.h"

#include "Foundation/JsonReader.h"

#include <QJsonDocument>

using namespace Qt::StringLiterals;

RemoteUpdate RemoteUpdate::read(JsonReader &reader)
{
    return {
        .version = reader.requiredText(u"version"_s),
        .download_url = reader.requiredText(u"download_url"_s),
        .release_notes = reader.text(u"release_notes"_s),
    };
}

QByteArray RemoteUpdate::toJson() const
{
    QJsonObject object{{u"version"_s, version}, {u"download_url"_s, download_url}};
    if (release_notes)
        object.insert(u"release_notes"_s, *release_notes);
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}
