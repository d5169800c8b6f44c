// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// A file that is the user's alone, as its folder is: from the start, or once either is found wider.
namespace PrivateFile {

/// Empty where there is no such file; nothing where there is one that cannot be read.
std::optional<QByteArray> read(const QString &path);

void makeFolder(const QString &path);

/// Puts this content in the file's place, all of it or nothing, whatever happens to the program or to the machine.
/// A link to the file stays. Only one program at a time may do this.
bool replace(const QString &path, const QByteArray &content);

} // namespace PrivateFile
