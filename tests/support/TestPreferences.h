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
    ~TestPreferences();
    Q_DISABLE_COPY_MOVE(TestPreferences)

    /// The preference file, as the program names it. On Linux only.
    QString fileName() const;
    /// Writes one key the way another program would.
    void write(const QString &key, const QVariant &value) const;
    /// The value as it is stored; invalid where the key is absent.
    QVariant stored(const QString &key) const;
    /// Replaces the whole file. On Linux only.
    void writeFile(const QByteArray &content) const;

private:
    /// What Qt knows of a file it keeps under its name, and takes a change within the same moment for none.
    QString newNameForTheFile() const;

    QTemporaryDir m_directory;
    mutable int m_names = 0;
};
