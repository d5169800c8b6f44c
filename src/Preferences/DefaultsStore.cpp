// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Preferences/DefaultsStore.h"

#include "Foundation/Log.h"
#include "Preferences/PreferenceStorage.h"

using namespace Qt::StringLiterals;

namespace {

std::unique_ptr<QSettings> openedAlone()
{
    auto settings = PreferenceStorage::open();
    // Without this a key that is absent would be looked for in places shared with others.
    settings->setFallbacksEnabled(false);
    return settings;
}

/// The status of a QSettings never recovers from an error, so a new one is asked. All share what is still to be
/// written.
bool isSaved()
{
    const auto settings = openedAlone();
    PreferenceStorage::sync(*settings);
    return settings->status() != QSettings::AccessError;
}

} // namespace

DefaultsStore::DefaultsStore() : m_settings(openedAlone()) {}

QVariant DefaultsStore::value(const QString &key) const
{
    if (!m_inTransaction)
        PreferenceStorage::sync(*m_settings);
    return PreferenceStorage::value(m_settings->value(key));
}

void DefaultsStore::setValue(const QString &key, const QVariant &value)
{
    m_settings->setValue(key, PreferenceStorage::stored(value));
    if (!m_inTransaction)
        save();
}

DefaultsStore::Transaction::Transaction(DefaultsStore &store) : m_store(store)
{
    PreferenceStorage::sync(*m_store.m_settings);
    m_store.m_inTransaction = true;
}

DefaultsStore::Transaction::~Transaction()
{
    m_store.m_inTransaction = false;
    m_store.save();
}

void DefaultsStore::save()
{
    PreferenceStorage::sync(*m_settings);
    const bool failed = !isSaved();
    if (failed && !m_writeFailed)
        logLine(u"The preferences cannot be saved; changes last until the program ends."_s);
    m_writeFailed = failed;
}
