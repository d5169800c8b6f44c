// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Process/SingleInstance.h"

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QObject>
#include <QVariantMap>

/// The program's well-known bus name in this preference domain: "app.vantelo.Vantelo", one more element for
/// every further word of the domain.
QString applicationBusName(const QString &domain);

/// Where org.freedesktop.Application stands for that name.
QString applicationObjectPath(const QString &busName);

/// The interface org.freedesktop.Application, through which a second launch reaches the first.
class ApplicationService : public QObject {
    Q_OBJECT

public:
    ApplicationService();

    /// Calls before there is somebody to tell are not lost.
    void onActivation(std::function<void()> activate);
    /// Returns at once: the caller is a process that waits to end.
    void activateLater(const QVariantMap &platformData);

private:
    void activate();

    std::function<void()> m_activate;
    bool m_missed = false;
};

class ApplicationServiceAdaptor : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    explicit ApplicationServiceAdaptor(ApplicationService &service);

public Q_SLOTS:
    // There are no documents and no actions: every one of them brings the program to the front.
    void Activate(const QVariantMap &platform_data);
    void Open(const QStringList &uris, const QVariantMap &platform_data);
    void ActivateAction(const QString &action_name, const QVariantList &parameter, const QVariantMap &platform_data);

private:
    ApplicationService &m_service;
};
