// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Process/macOS/InstanceLock.h"

#include "Foundation/Deployment.h"

#include <QByteArray>
#include <QFile>
#include <QStandardPaths>

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

qint64 processIn(int file)
{
    std::array<char, 32> text{};
    const ssize_t length = ::pread(file, text.data(), text.size(), 0);
    return length > 0 ? QByteArray(text.data(), length).trimmed().toLongLong() : 0;
}

void writeProcessInto(int file)
{
    const QByteArray text = QByteArray::number(qint64{::getpid()}) + '\n';
    if (::ftruncate(file, 0) == 0) [[maybe_unused]]
        const auto written = ::pwrite(file, text.constData(), static_cast<std::size_t>(text.size()), 0);
}

} // namespace

QString InstanceLock::usualPath()
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return folder + u"/app.vantelo."_s + Deployment::domain() + u".lock"_s;
}

InstanceLock::InstanceLock(const QString &path)
    : m_file(::open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR))
{
    if (m_file < 0)
        return;
    if (::flock(m_file, LOCK_EX | LOCK_NB) == 0)
        writeProcessInto(m_file);
    else if (errno == EWOULDBLOCK)
        m_other = processIn(m_file);
}

InstanceLock::~InstanceLock()
{
    if (m_file >= 0)
        ::close(m_file);
}
