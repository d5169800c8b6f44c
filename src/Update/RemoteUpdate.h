// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

class JsonReader;

/// The update feed's one record; members bear the keys' own names.
struct RemoteUpdate {
    QString version;      ///< newest released version, dotted decimal
    QString download_url; ///< what to open when the user chooses to download
    std::optional<QString> release_notes;

    static RemoteUpdate read(JsonReader &reader);

    /// The record as a feed serves it; release_notes only when present.
    QByteArray toJson() const;
};
