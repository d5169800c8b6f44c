// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Preferences/Linux/PrivateFile.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

constexpr mode_t others = S_IRWXG | S_IRWXO;

void makeWithParents(const QString &folder)
{
    if (QFileInfo::exists(folder))
        return;
    makeWithParents(QFileInfo(folder).path());
    ::mkdir(QFile::encodeName(folder).constData(), S_IRWXU);
}

void tightenFolder(const QString &path)
{
    const QByteArray folder = QFile::encodeName(QFileInfo(path).path());
    struct stat status {};
    if (::stat(folder.constData(), &status) == 0 && (status.st_mode & others) != 0)
        ::chmod(folder.constData(), status.st_mode & ~others);
}

std::optional<QByteArray> contentOf(int descriptor)
{
    struct stat status {};
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode))
        return QByteArray();
    if ((status.st_mode & others) != 0)
        ::fchmod(descriptor, status.st_mode & ~others);
    QFile file;
    file.open(descriptor, QIODevice::ReadOnly | QIODevice::Unbuffered);
    const QByteArray content = file.read(status.st_size);
    return file.error() == QFile::NoError ? std::optional(content) : std::nullopt;
}

/// What a link leads to, so that the link stays.
QString targetOf(const QString &path)
{
    const QFileInfo file(path);
    if (!file.isSymLink())
        return path;
    return file.exists() ? file.canonicalFilePath() : file.symLinkTarget();
}

/// On disk before it is given its name: some file systems have an empty file after a power cut otherwise.
bool writeNew(const QByteArray &path, const QByteArray &content)
{
    const int descriptor = ::open(path.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
    QFile file;
    return descriptor >= 0 &&
           file.open(descriptor, QIODevice::WriteOnly | QIODevice::Unbuffered, QFile::AutoCloseHandle) &&
           file.write(content) == content.size() && ::fsync(descriptor) == 0;
}

} // namespace

std::optional<QByteArray> PrivateFile::read(const QString &path)
{
    tightenFolder(path);
    // What is no file, a pipe for one, must not be waited for.
    const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0)
        return errno == ENOENT ? std::optional(QByteArray()) : std::nullopt;
    std::optional content = contentOf(descriptor);
    ::close(descriptor);
    return content;
}

void PrivateFile::makeFolder(const QString &path) { makeWithParents(QFileInfo(path).path()); }

bool PrivateFile::replace(const QString &path, const QByteArray &content)
{
    const QString target = targetOf(path);
    const QFileInfo present(target);
    if (present.exists() && !(present.isFile() && present.isWritable()))
        return false;
    const QByteArray draft = QFile::encodeName(target + u".new"_s);
    ::unlink(draft.constData()); // a killed program's
    if (writeNew(draft, content) && ::rename(draft.constData(), QFile::encodeName(target).constData()) == 0)
        return true;
    ::unlink(draft.constData());
    return false;
}
