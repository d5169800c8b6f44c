// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QTemporaryDir>
#include <QVariant>

/// A private, empty home for preferences while the object lives.
class TestPreferences {
public:
    TestPreferences();

    /// The preference file, as the program names it.
    QString fileName() const;
    /// Writes one key the way another program would.
    void write(const QString &key, const QVariant &value) const;
    /// The value as it stands in the file; invalid where the key is absent.
    QVariant stored(const QString &key) const;
    /// Replaces the whole file.
    void writeFile(const QByteArray &content) const;

private:
    QTemporaryDir m_directory;
};
