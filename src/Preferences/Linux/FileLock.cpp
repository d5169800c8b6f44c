// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Preferences/Linux/FileLock.h"

#include <QDateTime>
#include <QFile>
#include <QSysInfo>

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int flags = O_RDWR | O_CLOEXEC | O_NOFOLLOW;

/// Whoever makes the file locks it and writes into it in the same breath.
bool isBeingMade(const struct stat &file)
{
    constexpr qint64 breath = 500; // milliseconds
    const qint64 age =
        QDateTime::currentMSecsSinceEpoch() - file.st_mtim.tv_sec * 1000 - file.st_mtim.tv_nsec / 1000000;
    return file.st_size == 0 && std::abs(age) < breath; // the clock may have been set back since
}

bool isAbandoned(int descriptor, const QByteArray &path)
{
    struct stat opened {};
    struct stat found {};
    if (descriptor < 0 || ::fstat(descriptor, &opened) != 0 || isBeingMade(opened))
        return false;
    return ::flock(descriptor, LOCK_EX | LOCK_NB) == 0 && ::stat(path.constData(), &found) == 0 &&
           found.st_ino == opened.st_ino; // nobody has released it meanwhile
}

/// The process, its program and its machine: what others look for when they ask whether the holder lives.
void signIn(int descriptor)
{
    const QByteArray holder = QByteArray::number(::getpid()) + '\n' +
                              QFile::symLinkTarget(u"/proc/self/exe"_s).toUtf8() + '\n' +
                              QSysInfo::machineHostName().toUtf8() + '\n';
    QFile file;
    if (::ftruncate(descriptor, 0) == 0 && file.open(descriptor, QIODevice::WriteOnly))
        file.write(holder);
}

} // namespace

FileLock::FileLock(const QString &path) : m_path(QFile::encodeName(path))
{
    m_descriptor = ::open(m_path.constData(), flags | O_CREAT | O_EXCL, S_IRUSR | S_IWUSR);
    if (m_descriptor >= 0) {
        ::flock(m_descriptor, LOCK_EX | LOCK_NB); // where the file system knows none, the file itself has to do
        m_state = State::Held;
    } else if (errno == EEXIST) {
        m_descriptor = ::open(m_path.constData(), flags);
        m_state = isAbandoned(m_descriptor, m_path) ? State::Held : State::Taken;
    }
    if (m_state == State::Held)
        signIn(m_descriptor);
}

FileLock::~FileLock()
{
    if (m_state == State::Held)
        ::unlink(m_path.constData());
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}
