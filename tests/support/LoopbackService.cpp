// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "LoopbackService.h"

#include "TestDeployment.h"

#include <QFile>
#include <QProcess>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslServer>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <map>
#include <sys/socket.h>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

std::unique_ptr<QTcpServer> tlsServer()
{
    auto server = std::make_unique<QSslServer>();
    server->setSslConfiguration(LoopbackService::tlsConfiguration());
    return server;
}

} // namespace

LoopbackService::Reply LoopbackService::Reply::whole(const QByteArray &body, int status, const QByteArray &extraHeaders)
{
    return {.bytes = "HTTP/1.1 " + QByteArray::number(status) + " Said\r\nContent-Type: application/json\r\n" +
                     extraHeaders + "Content-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body,
        .then = Then::KeepAlive};
}

QSslConfiguration LoopbackService::tlsConfiguration()
{
    static const QTemporaryDir directory;
    const QString key = directory.filePath(u"key.pem"_s);
    const QString certificate = directory.filePath(u"certificate.pem"_s);
    if (!QFile::exists(certificate)) {
        const QStringList arguments{u"req"_s, u"-x509"_s, u"-newkey"_s, u"ec"_s, u"-pkeyopt"_s,
            u"ec_paramgen_curve:prime256v1"_s, u"-nodes"_s, u"-subj"_s, u"/CN=localhost"_s, u"-addext"_s,
            u"subjectAltName=DNS:localhost"_s, u"-keyout"_s, key, u"-out"_s, certificate};
        QProcess openssl;
        openssl.start(u"openssl"_s, arguments);
        if (!openssl.waitForFinished() || openssl.exitCode() != 0)
            qFatal("openssl made no certificate");
        TestDeployment::setTrustedAuthorities(certificate);
    }
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setLocalCertificate(QSslCertificate::fromPath(certificate).value(0));
    QFile keyFile(key);
    if (keyFile.open(QIODevice::ReadOnly))
        configuration.setPrivateKey(QSslKey(&keyFile, QSsl::Ec));
    return configuration;
}

LoopbackService::LoopbackService(Transport transport)
    : m_server(transport == Transport::Tls ? tlsServer() : std::make_unique<QTcpServer>()), m_transport(transport)
{
    answerAll(Reply::whole("{}"));
    connect(m_server.get(), &QTcpServer::pendingConnectionAvailable, this, &LoopbackService::accept);
    // One port for all tests of a program: the update checker makes its address once.
    static std::map<Transport, quint16> ports;
    quint16 &port = ports[m_transport];
    if (!m_server->listen(QHostAddress::LocalHost, port))
        qFatal("cannot listen on loopback");
    port = m_server->serverPort();
    TestDeployment::setOrigin(origin());
}

LoopbackService::~LoopbackService() { TestDeployment::setOrigin(u"http://127.0.0.1:9"_s); }

void LoopbackService::answerAll(const Reply &reply)
{
    answer([reply](const Request &) { return reply; });
}

void LoopbackService::answerInsights(const QByteArray &today, const QByteArray &lastSevenDays)
{
    answer([=](const Request &request) {
        if (request.target.contains("date_preset=today"))
            return Reply::whole(today);
        return Reply::whole(request.target.contains("date_preset=last_7d") ? lastSevenDays : "{}");
    });
}

void LoopbackService::breakSilence(const Reply &reply)
{
    for (const QPointer<QTcpSocket> &socket : std::exchange(m_silent, {}))
        send(socket, reply);
}

void LoopbackService::loseConnections()
{
    for (QTcpSocket *const socket : m_server->findChildren<QTcpSocket *>())
        socket->disconnect(this);
}

qsizetype LoopbackService::requestsWith(const QByteArray &text) const
{
    return std::ranges::count_if(m_requests, [&](const Request &request) { return request.target.contains(text); });
}

QString LoopbackService::origin() const
{
    return (m_transport == Transport::Tls ? u"https://localhost:%1"_s : u"http://127.0.0.1:%1"_s)
        .arg(m_server->serverPort());
}

void LoopbackService::accept()
{
    while (QTcpSocket *const socket = m_server->nextPendingConnection()) {
        ++m_connections;
        connect(socket, &QTcpSocket::readyRead, this, [=, this] { receive(socket); });
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    }
}

void LoopbackService::receive(QTcpSocket *socket)
{
    static constexpr QByteArrayView endOfHead = "\r\n\r\n";
    while (socket->isOpen()) {
        const QByteArray waiting = socket->peek(socket->bytesAvailable());
        const qsizetype end = waiting.indexOf(endOfHead);
        if (end < 0)
            return;
        const QByteArray head = socket->read(end + endOfHead.size());
        const QList<QByteArray> requestLine = head.first(head.indexOf("\r\n")).split(' ');
        m_requests.append({.target = requestLine.value(1), .head = head});
        send(socket, m_answer(m_requests.constLast()));
        Q_EMIT requested();
    }
}

void LoopbackService::send(QTcpSocket *socket, const Reply &reply)
{
    socket->write(reply.bytes);
    switch (reply.then) {
    case Reply::Then::Close:
        socket->disconnectFromHost();
        break;
    case Reply::Then::Reset: {
        socket->flush();
        constexpr linger noLinger{.l_onoff = 1, .l_linger = 0}; // close() then resets the connection
        ::setsockopt(static_cast<int>(socket->socketDescriptor()), SOL_SOCKET, SO_LINGER, &noLinger, sizeof noLinger);
        socket->abort();
        break;
    }
    case Reply::Then::Repeat:
        repeat(socket, reply);
        break;
    case Reply::Then::Silence:
        m_silent << socket;
        break;
    case Reply::Then::KeepAlive:
        break;
    }
}

void LoopbackService::repeat(QTcpSocket *socket, const Reply &reply)
{
    auto *const timer = new QTimer(socket);
    connect(timer, &QTimer::timeout, socket, [=, left = reply.times]() mutable {
        if (socket->bytesToWrite() > 0)
            return;
        socket->write(left > 0 ? reply.again : reply.last);
        if (left-- == 0)
            timer->stop();
    });
    timer->start(reply.pause);
}
