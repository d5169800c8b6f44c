// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QFileSystemWatcher>
#include <QTimer>

#include <functional>

/// Tells that the preference file may have changed: written in place, replaced, removed or made, or its folder, or the
/// file that it leads to. The kernel is asked only while this lives.
class PreferenceWatch : public QObject {
    Q_OBJECT

public:
    PreferenceWatch(QString path, std::function<void()> changed);

private:
    void lookAgain();
    QStringList places() const;

    QString m_path;
    QFileSystemWatcher m_watcher;
    QTimer m_pause; ///< runs from the first of several changes
};
