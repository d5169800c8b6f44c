// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "MenuBar/Linux/StatusItem/StatusNotifierHost.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QString watcherService = u"org.kde.StatusNotifierWatcher"_s;
const QString shellService = u"org.gnome.Shell"_s;

constexpr std::chrono::milliseconds firstRetry = 500ms;
constexpr std::chrono::milliseconds lastRetry = 1min;

} // namespace

StatusNotifierHost::StatusNotifierHost(QDBusConnection connection, QString itemPath)
    : m_connection(std::move(connection)), m_itemPath(std::move(itemPath))
{
    m_services.setConnection(m_connection);
    m_services.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
    m_services.setWatchedServices({watcherService, shellService});
    connect(&m_services, &QDBusServiceWatcher::serviceOwnerChanged, this,
        [this](const QString &service, const QString &, const QString &owner) { setOwner(service, owner); });
    m_retry.setSingleShot(true);
    connect(&m_retry, &QTimer::timeout, this, &StatusNotifierHost::registerItem);
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
        newWatcher();
    }
    if (m_watcherOwner)
        Q_EMIT changed();
}

void StatusNotifierHost::newWatcher()
{
    m_retry.stop();
    m_retryDelay = firstRetry;
    if (isPresent())
        registerItem();
}

void StatusNotifierHost::registerItem()
{
    // To the owner itself: nothing is started, and a late answer is known to be an old one's.
    const QString owner = m_watcherOwner.value_or(QString());
    QDBusMessage call = QDBusMessage::createMethodCall(
        owner, u"/StatusNotifierWatcher"_s, watcherService, u"RegisterStatusNotifierItem"_s);
    call << m_itemPath;
    call.setAutoStartService(false);
    auto *const answer = new QDBusPendingCallWatcher(m_connection.asyncCall(call), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [=, this] {
        if (answer->isError() && m_watcherOwner == owner)
            registrationFailed();
        answer->deleteLater();
    });
}

// Some watchers own their name a moment before they answer to it.
void StatusNotifierHost::registrationFailed()
{
    if (m_retryDelay > lastRetry)
        return;
    m_retry.start(m_retryDelay);
    m_retryDelay *= 2;
}
