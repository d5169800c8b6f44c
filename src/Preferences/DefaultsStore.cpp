// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Preferences/DefaultsStore.h"

#include "Foundation/Log.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

// While another program is writing. The main thread does other things meanwhile.
constexpr auto betweenTries = 50ms;
constexpr auto patience = 1s;

} // namespace

DefaultsStore::DefaultsStore() : m_storage(PreferenceStorage::open())
{
    m_nextTry.setSingleShot(true);
    m_nextTry.setInterval(betweenTries);
    m_nextTry.callOnTimeout([this] { trySaving(); });
}

DefaultsStore::~DefaultsStore() { tell(m_storage->sync() != PreferenceStorage::Outcome::Done); }

QVariant DefaultsStore::value(const QString &key) const
{
    if (!m_inTransaction)
        m_storage->sync();
    return m_storage->value(key);
}

void DefaultsStore::setValue(const QString &key, const QVariant &value)
{
    m_storage->setValue(key, value);
    if (!m_inTransaction)
        save();
}

std::unique_ptr<QObject> DefaultsStore::watch(std::function<void()> changed) const
{
    return m_storage->watch(std::move(changed));
}

DefaultsStore::Transaction::Transaction(DefaultsStore &store) : m_store(store)
{
    m_store.m_storage->sync();
    m_store.m_inTransaction = true;
}

DefaultsStore::Transaction::~Transaction()
{
    m_store.m_inTransaction = false;
    m_store.save();
}

void DefaultsStore::save()
{
    if (!m_nextTry.isActive())
        m_patience.setRemainingTime(patience);
    trySaving();
}

void DefaultsStore::trySaving()
{
    const PreferenceStorage::Outcome outcome = m_storage->sync();
    if (outcome == PreferenceStorage::Outcome::Busy && !m_patience.hasExpired()) {
        m_nextTry.start();
        return;
    }
    m_nextTry.stop();
    tell(outcome != PreferenceStorage::Outcome::Done);
}

void DefaultsStore::tell(bool failed)
{
    if (failed && !m_writeFailed)
        logLine(u"The preferences cannot be saved; changes last until the program ends."_s);
    m_writeFailed = failed;
}
