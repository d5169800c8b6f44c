// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Machine/OnlineWatch.h"

#include <QDBusConnection>
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
constexpr uint unknown = 0;
constexpr uint online = 70;

/// Asks NetworkManager, over a connection to the system bus that is closed with this.
class NetworkManagerWatch : public OnlineWatch {
    Q_OBJECT

public:
    NetworkManagerWatch() : m_connection(QDBusConnection::connectToBus(QDBusConnection::SystemBus, bus))
    {
        // From any sender: to wait for one by name Qt asks for its owner, and until that is answered nothing else goes
        // on.
        m_connection.connect({}, path, service, u"StateChanged"_s, this, SLOT(judge(uint)));
        if (m_connection.isConnected())
            ask();
        else // a call without a bus never ends
            QMetaObject::invokeMethod(this, &OnlineWatch::online, Qt::QueuedConnection);
    }

    ~NetworkManagerWatch() override { QDBusConnection::disconnectFromBus(bus); }
    Q_DISABLE_COPY_MOVE(NetworkManagerWatch)

private Q_SLOTS:
    void judge(uint state)
    {
        if (state == unknown || state >= ::online)
            Q_EMIT OnlineWatch::online();
    }

private:
    void ask()
    {
        auto question = QDBusMessage::createMethodCall(service, path, u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
        question << QString(service) << u"State"_s;
        question.setAutoStartService(false);
        const auto *const call = new QDBusPendingCallWatcher(m_connection.asyncCall(question), this);
        connect(call, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher *finished) {
            const QDBusPendingReply<QDBusVariant> answer = *finished;
            judge(answer.isError() ? unknown : answer.value().variant().toUInt());
        });
    }

    QDBusConnection m_connection;
};

} // namespace

std::unique_ptr<OnlineWatch> OnlineWatch::create() { return std::make_unique<NetworkManagerWatch>(); }

#include "OnlineWatch.moc"
