// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include <QEventLoopLocker>
#include <QGenericPlugin>
#include <QTimer>

#include <cstdio>
#include <memory>

/// Does what a desktop's plug-ins do: holds a lock on the program's event loop while a job of its own runs.
class LockingPlugin : public QGenericPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "LockingPlugin.json")

public:
    QObject *create(const QString &, const QString &) override
    {
        auto *const job = new QTimer(this);
        job->setSingleShot(true);
        connect(job, &QTimer::timeout, this, [this] {
            m_lock.reset();
            std::puts("the plug-in's job has ended");
            std::fflush(stdout);
        });
        job->start(0); // the event loop runs by then
        return job;
    }

private:
    std::unique_ptr<QEventLoopLocker> m_lock = std::make_unique<QEventLoopLocker>();
};

#include "LockingPlugin.moc"
