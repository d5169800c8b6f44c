// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Machine/Linux/NetworkManagerWatch.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

using namespace Qt::StringLiterals;

namespace {

constexpr auto bus = "app.vantelo.online"_L1;
constexpr auto service = "org.freedesktop.NetworkManager"_L1;
constexpr auto path = "/org/freedesktop/NetworkManager"_L1;

// What NetworkManager says of the machine as a whole.
constexpr uint stateUnknown = 0;
constexpr uint stateOnline = 70;

} // namespace

NetworkManagerWatch::NetworkManagerWatch()
    : m_connection(QDBusConnection::connectToBus(QDBusConnection::SystemBus, bus))
{
    // From any sender: to wait for one by name Qt asks for its owner, and until that is answered nothing else goes on.
    m_connection.connect({}, path, service, u"StateChanged"_s, this, SLOT(judge(uint)));
    if (m_connection.isConnected())
        ask();
    else // a call without a bus never ends
        QMetaObject::invokeMethod(this, &OnlineWatch::online, Qt::QueuedConnection);
}

NetworkManagerWatch::~NetworkManagerWatch() { QDBusConnection::disconnectFromBus(bus); }

void NetworkManagerWatch::judge(uint state)
{
    if (state == stateUnknown || state >= stateOnline)
        Q_EMIT online();
}

void NetworkManagerWatch::ask()
{
    auto question = QDBusMessage::createMethodCall(service, path, u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
    question << QString(service) << u"State"_s;
    question.setAutoStartService(false);
    const auto *const call = new QDBusPendingCallWatcher(m_connection.asyncCall(question), this);
    connect(call, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher *finished) {
        const QDBusPendingReply<QDBusVariant> answer = *finished;
        judge(answer.isError() ? stateUnknown : answer.value().variant().toUInt());
    });
}

std::unique_ptr<OnlineWatch> OnlineWatch::create() { return std::make_unique<NetworkManagerWatch>(); }
