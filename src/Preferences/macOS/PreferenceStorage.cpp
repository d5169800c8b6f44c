// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Preferences/PreferenceStorage.h"

#include "Foundation/Deployment.h"

using namespace Qt::StringLiterals;

// Qt names the domain by an address, read backwards, and the application: together "app.vantelo.Vantelo", the
// bundle's own.
std::unique_ptr<QSettings> PreferenceStorage::open()
{
    return std::make_unique<QSettings>(
        QSettings::NativeFormat, QSettings::UserScope, u"vantelo.app"_s, Deployment::domain());
}

// The system itself writes the file, with its types, and for the user alone.

void PreferenceStorage::sync(QSettings &settings) { settings.sync(); }

QVariant PreferenceStorage::stored(const QVariant &value) { return value; }

QVariant PreferenceStorage::value(const QVariant &stored) { return stored; }
