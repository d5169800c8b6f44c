// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Preferences/PreferenceStorage.h"

#include "Foundation/Deployment.h"
#include "Preferences/Linux/PreferenceFormat.h"

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

std::unique_ptr<QSettings> PreferenceStorage::open()
{
    return std::make_unique<QSettings>(
        PreferenceFormat::format(), QSettings::UserScope, u"Vantelo"_s, Deployment::domain());
}

void PreferenceStorage::sync(QSettings &settings)
{
    const PrivateFileCreation guard;
    tighten(QFileInfo(settings.fileName()).path());
    tighten(settings.fileName());
    settings.sync();
}

QVariant PreferenceStorage::stored(const QVariant &value) { return PreferenceFormat::stored(value); }

QVariant PreferenceStorage::value(const QVariant &stored) { return PreferenceFormat::value(stored); }
