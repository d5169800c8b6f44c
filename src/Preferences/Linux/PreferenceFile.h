// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Preferences/Linux/PreferenceFormat.h"
#include "Preferences/PreferenceStorage.h"

/// The preferences in a file that QSettings could have written. It is read whole each time and replaced whole, so that
/// nobody ever finds half of it; its lines that mean nothing here stay, and so does a link to it.
///
/// The file, its folder and its lock are the user's alone from the start, and are made so when they are found wider.
class PreferenceFile : public PreferenceStorage {
public:
    explicit PreferenceFile(QString path);

    QVariant value(const QString &key) const override;
    void setValue(const QString &key, const QVariant &value) override;
    Outcome sync() override;
    std::unique_ptr<QObject> watch(std::function<void()> changed) const override;

private:
    bool read();
    bool write();

    QString m_path;
    QByteArray m_content;                ///< the file as it was last read or written
    PreferenceFormat::Entries m_entries; ///< what it says
    PreferenceFormat::Entries m_unsaved; ///< what it is still to say
};
