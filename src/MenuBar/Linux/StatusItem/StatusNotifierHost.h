// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include "MenuBar/Linux/StatusItem/StatusNotifierRegistration.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>

#include <memory>
#include <optional>

/// The status area that shows the item, as far as the bus knows: registers the item with every host that
/// appears, for as long as the program runs, and says what is there.
class StatusNotifierHost : public QObject {
    Q_OBJECT

public:
    /// The item at `itemPath` is exported already.
    StatusNotifierHost(QDBusConnection connection, QString itemPath);

    bool isPresent() const { return !m_watcherOwner.value_or(QString()).isEmpty(); }
    /// GNOME reads menu labels in a way of its own.
    bool isGnomeShell() const { return isPresent() && m_watcherOwner == m_shellOwner; }

Q_SIGNALS:
    /// Also when it has turned out at the start that there is none.
    void changed();
    /// As StatusNotifierRegistration::confirmed() says it of the watcher that is there.
    void itemConfirmed();

private:
    void askForOwner(const QString &service);
    void setOwner(const QString &service, const QString &owner);
    void registerItem();

    QDBusConnection m_connection;
    QString m_itemPath;
    QDBusServiceWatcher m_services;
    std::optional<QString> m_watcherOwner; ///< unique bus name, empty where there is none
    QString m_shellOwner;
    std::unique_ptr<StatusNotifierRegistration> m_registration; ///< with the watcher that is there
};
