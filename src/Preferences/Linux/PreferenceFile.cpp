// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Preferences/Linux/PreferenceFile.h"

#include "Preferences/Linux/FileLock.h"
#include "Preferences/Linux/PreferenceWatch.h"
#include "Preferences/Linux/PrivateFile.h"

#include <utility>

using namespace Qt::StringLiterals;

PreferenceFile::PreferenceFile(QString path) : m_path(std::move(path)) { read(); }

QVariant PreferenceFile::value(const QString &key) const
{
    for (const PreferenceFormat::Entries *const entries : {&m_unsaved, &m_entries})
        if (const auto entry = entries->constFind(key); entry != entries->cend())
            return PreferenceFormat::value(*entry);
    return {};
}

void PreferenceFile::setValue(const QString &key, const QVariant &value)
{
    m_unsaved.insert(key, PreferenceFormat::stored(value));
}

PreferenceStorage::Outcome PreferenceFile::sync()
{
    if (m_unsaved.isEmpty()) {
        read();
        return Outcome::Done;
    }
    PrivateFile::makeFolder(m_path);
    const FileLock lock(m_path + u".lock"_s);
    const bool isReadable = read(); // as nobody else can change it any more
    if (lock.state() == FileLock::State::Taken)
        return Outcome::Busy;
    return lock.state() == FileLock::State::Held && isReadable && write() ? Outcome::Done : Outcome::Failed;
}

/// What was read before stays known while the file cannot be read.
bool PreferenceFile::read()
{
    const std::optional<QByteArray> content = PrivateFile::read(m_path);
    if (content && *content != m_content) {
        m_content = *content;
        m_entries = PreferenceFormat::entries(m_content);
    }
    return content.has_value();
}

bool PreferenceFile::write()
{
    PreferenceFormat::Entries entries = m_entries;
    entries.insert(m_unsaved);
    const QByteArray content = PreferenceFormat::content(entries);
    if (!PrivateFile::replace(m_path, content))
        return false;
    m_content = content;
    m_entries = entries;
    m_unsaved.clear();
    return true;
}

std::unique_ptr<QObject> PreferenceFile::watch(std::function<void()> changed) const
{
    return std::make_unique<PreferenceWatch>(m_path, std::move(changed));
}
