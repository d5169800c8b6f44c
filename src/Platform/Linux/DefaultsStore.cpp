// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Platform/DefaultsStore.h"

#include "Platform/Deployment.h"
#include "Platform/Log.h"
#include "Platform/Linux/PreferenceFormat.h"

#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

/// New files are the user's alone while this lives. Kept short and on the main thread, which alone makes files
/// and starts programs: the browser must inherit the user's own mask.
class PrivateFileCreation {
public:
    PrivateFileCreation() : m_previous(::umask(S_IRWXG | S_IRWXO)) {}
    ~PrivateFileCreation() { ::umask(m_previous); }
    Q_DISABLE_COPY_MOVE(PrivateFileCreation)

private:
    mode_t m_previous;
};

/// By the system's own calls: this runs at each read, and QFile takes several for the same.
void tighten(const QString &path)
{
    constexpr mode_t others = S_IRWXG | S_IRWXO;
    const QByteArray name = QFile::encodeName(path);
    struct stat status {};
    if (::stat(name.constData(), &status) == 0 && (status.st_mode & others) != 0)
        ::chmod(name.constData(), status.st_mode & ~others);
}

} // namespace

DefaultsStore::DefaultsStore()
    : m_settings(PreferenceFormat::format(), QSettings::UserScope, u"Vantelo"_s, Deployment::domain())
{
    // Without this a key that the user's file lacks would be looked for in files shared with others.
    m_settings.setFallbacksEnabled(false);
}

QVariant DefaultsStore::value(const QString &key) const
{
    if (!m_inTransaction)
        sync();
    return PreferenceFormat::value(m_settings.value(key));
}

void DefaultsStore::setValue(const QString &key, const QVariant &value)
{
    m_settings.setValue(key, PreferenceFormat::stored(value));
    if (!m_inTransaction)
        save();
}

DefaultsStore::Transaction::Transaction(DefaultsStore &store) : m_store(store)
{
    m_store.sync();
    m_store.m_inTransaction = true;
}

DefaultsStore::Transaction::~Transaction()
{
    m_store.m_inTransaction = false;
    m_store.save();
}

void DefaultsStore::save()
{
    sync();
    const bool failed = !isSaved();
    if (failed && !m_writeFailed)
        logLine(u"The preferences cannot be saved; changes last until the program ends."_s);
    m_writeFailed = failed;
}

/// The status of a QSettings never recovers from an error, so a new one is asked. All share what is still to be
/// written.
bool DefaultsStore::isSaved() const
{
    const PrivateFileCreation guard;
    QSettings settings(PreferenceFormat::format(), QSettings::UserScope, u"Vantelo"_s, Deployment::domain());
    settings.sync();
    return settings.status() != QSettings::AccessError;
}

void DefaultsStore::sync() const
{
    const PrivateFileCreation guard;
    tighten(QFileInfo(m_settings.fileName()).path());
    tighten(m_settings.fileName());
    m_settings.sync();
}
