// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Process/SingleInstance.h"

#include "Foundation/Deployment.h"
#include "Process/Linux/ApplicationService.h"
#include "Process/Linux/PrivateBus.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDir>
#include <QLockFile>

#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// The claim by a name on the session bus.
class BusClaim : public SingleInstance {
public:
    enum class Outcome { Granted, Taken, Impossible };

    Outcome request();
    /// Asks the process that holds the name to come to the front.
    void activateOwner();

    void onActivation(std::function<void()> activate) override { m_service.onActivation(std::move(activate)); }

private:
    ApplicationService m_service;
    PrivateBus m_bus{u"vantelo-application"_s};
    QString m_name = applicationBusName(Deployment::domain());
};

BusClaim::Outcome BusClaim::request()
{
    QDBusConnection &connection = m_bus.connection();
    if (!connection.isConnected())
        return Outcome::Impossible;
    // The object first: a second launch may call the moment the name is there.
    connection.registerObject(applicationObjectPath(m_name), &m_service, QDBusConnection::ExportAdaptors);
    const auto reply = connection.interface()->registerService(
        m_name, QDBusConnectionInterface::DontQueueService, QDBusConnectionInterface::DontAllowReplacement);
    if (!reply.isValid())
        return Outcome::Impossible;
    return reply.value() == QDBusConnectionInterface::ServiceRegistered ? Outcome::Granted : Outcome::Taken;
}

void BusClaim::activateOwner()
{
    QVariantMap platformData;
    if (const QString token = qEnvironmentVariable("XDG_ACTIVATION_TOKEN"); !token.isEmpty())
        platformData.insert(u"activation-token"_s, token);
    QDBusMessage call = QDBusMessage::createMethodCall(
        m_name, applicationObjectPath(m_name), u"org.freedesktop.Application"_s, u"Activate"_s);
    call << platformData;
    call.setAutoStartService(false);
    constexpr std::chrono::milliseconds patience = 1s; // the first one may be busy; the message waits for it
    m_bus.connection().call(call, QDBus::Block, static_cast<int>(patience.count()));
}

/// The claim where there is no bus: nobody can be called to the front, but there is never a second poller.
class LockClaim : public SingleInstance {
public:
    LockClaim() { m_lock.setStaleLockTime(0); } // a lock that is old is no less held

    bool request()
    {
        // A lock that cannot be written at all is no reason not to run.
        return m_lock.tryLock() || m_lock.error() != QLockFile::LockFailedError;
    }

    void onActivation(std::function<void()>) override {}

private:
    QLockFile m_lock{
        QDir::temp().filePath(u"%1-%2.lock"_s.arg(applicationBusName(Deployment::domain())).arg(::getuid()))};
};

} // namespace

std::unique_ptr<SingleInstance> SingleInstance::claim()
{
    auto onBus = std::make_unique<BusClaim>();
    switch (onBus->request()) {
    case BusClaim::Outcome::Granted:
        return onBus;
    case BusClaim::Outcome::Taken:
        onBus->activateOwner();
        return nullptr;
    case BusClaim::Outcome::Impossible:
        break;
    }
    auto byLock = std::make_unique<LockClaim>();
    if (!byLock->request())
        return nullptr;
    return byLock;
}
