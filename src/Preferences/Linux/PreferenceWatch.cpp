// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Preferences/Linux/PreferenceWatch.h"

#include <QFileInfo>

#include <utility>

using namespace std::chrono_literals;

namespace {

// Who writes a file in place empties it first; by then it is whole again. And a write of our own is several changes.
constexpr auto settling = 100ms;

} // namespace

PreferenceWatch::PreferenceWatch(QString path, std::function<void()> changed) : m_path(std::move(path))
{
    m_pause.setSingleShot(true);
    m_pause.setInterval(settling);
    const auto wait = [this] {
        if (!m_pause.isActive())
            m_pause.start();
    };
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, wait);
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, wait);
    connect(&m_pause, &QTimer::timeout, this, [this, changed = std::move(changed)] {
        lookAgain(); // before the file is read, so that nothing is missed
        changed();
    });
    lookAgain();
}

/// The kernel watches files, not names.
void PreferenceWatch::lookAgain()
{
    if (const QStringList before = m_watcher.files() + m_watcher.directories(); !before.isEmpty())
        m_watcher.removePaths(before);
    m_watcher.addPaths(places());
}

QStringList PreferenceWatch::places() const
{
    QString folder = QFileInfo(m_path).path();
    while (!QFileInfo::exists(folder)) // it may yet be made
        folder = QFileInfo(folder).path();
    QStringList places{folder};
    if (const QString target = QFileInfo(m_path).canonicalFilePath(); !target.isEmpty())
        places << target;
    return places;
}
