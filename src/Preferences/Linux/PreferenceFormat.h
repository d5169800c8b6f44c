// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QVariant>

/// How the preference file is written.
namespace PreferenceFormat {

/// Keys, behind a slash those of other sections, and what stands there for their values.
using Entries = QMap<QString, QByteArray>;

/// A file's content, and back. Lines that cannot be read are kept, and told.
Entries entries(QByteArray content);
QByteArray content(const Entries &entries);

/// What stands there for a text, a number or a flag, and back. Invalid where what stands there is of another kind.
QByteArray stored(const QVariant &value);
QVariant value(const QByteArray &stored);

} // namespace PreferenceFormat
