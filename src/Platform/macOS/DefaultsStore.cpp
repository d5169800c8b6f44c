// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Platform/DefaultsStore.h"

#include "Platform/Deployment.h"
#include "Platform/Log.h"

using namespace Qt::StringLiterals;

// The system itself keeps the file, with its types, and for the user alone. Qt names the domain by an address,
// read backwards, and the application: together "app.vantelo.Vantelo", the bundle's own.
DefaultsStore::DefaultsStore()
    : m_settings(QSettings::NativeFormat, QSettings::UserScope, u"vantelo.app"_s, Deployment::domain())
{
    // Without this a key that is absent would be looked for in domains shared with others.
    m_settings.setFallbacksEnabled(false);
}

QVariant DefaultsStore::value(const QString &key) const
{
    sync();
    return m_settings.value(key);
}

void DefaultsStore::setValue(const QString &key, const QVariant &value)
{
    m_settings.setValue(key, value);
    sync();
    const bool failed = m_settings.status() == QSettings::AccessError;
    if (failed && !m_writeFailed)
        logLine(u"The preferences cannot be saved; changes last until the program ends."_s);
    m_writeFailed = failed;
}

void DefaultsStore::sync() const { m_settings.sync(); }
