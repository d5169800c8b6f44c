// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "MenuBar/Linux/StatusItem/StatusNotifierHost.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

const QString watcherService = u"org.kde.StatusNotifierWatcher"_s;
const QString shellService = u"org.gnome.Shell"_s;

} // namespace

StatusNotifierHost::StatusNotifierHost(QDBusConnection connection, QString itemPath)
    : m_connection(std::move(connection)), m_itemPath(std::move(itemPath))
{
    m_services.setConnection(m_connection);
    m_services.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
    m_services.setWatchedServices({watcherService, shellService});
    connect(&m_services, &QDBusServiceWatcher::serviceOwnerChanged, this,
        [this](const QString &service, const QString &, const QString &owner) { setOwner(service, owner); });
    askForOwner(shellService); // first, so that it is known when the item is registered
    askForOwner(watcherService);
}

void StatusNotifierHost::askForOwner(const QString &service)
{
    QDBusMessage question = QDBusMessage::createMethodCall(
        u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s, u"org.freedesktop.DBus"_s, u"GetNameOwner"_s);
    question << service;
    auto *const answer = new QDBusPendingCallWatcher(m_connection.asyncCall(question), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [=, this] {
        const QDBusPendingReply<QString> reply = *answer;
        setOwner(service, reply.isValid() ? reply.value() : QString()); // an error means that nobody owns it
        answer->deleteLater();
    });
}

void StatusNotifierHost::setOwner(const QString &service, const QString &owner)
{
    if (service == shellService) {
        m_shellOwner = owner;
    } else {
        if (m_watcherOwner == owner)
            return;
        m_watcherOwner = owner;
        registerItem();
    }
    if (m_watcherOwner)
        Q_EMIT changed();
}

// With the owner itself: nothing is started, and what an old one still answers is not taken for the new one's word.
void StatusNotifierHost::registerItem()
{
    m_registration.reset();
    if (!isPresent())
        return;
    m_registration = std::make_unique<StatusNotifierRegistration>(m_connection, *m_watcherOwner, m_itemPath);
    connect(m_registration.get(), &StatusNotifierRegistration::confirmed, this, &StatusNotifierHost::itemConfirmed);
}
