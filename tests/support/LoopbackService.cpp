// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "LoopbackService.h"

#include "TestDeployment.h"

#include <QTcpSocket>

#include <algorithm>
#include <array>
#include <sys/socket.h>

using namespace Qt::StringLiterals;

LoopbackService::Reply LoopbackService::Reply::whole(const QByteArray &body, int status, const QByteArray &extraHeaders)
{
    return {.bytes = "HTTP/1.1 " + QByteArray::number(status) + " Said\r\nContent-Type: application/json\r\n" +
                     extraHeaders + "Content-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body,
        .then = Then::KeepAlive};
}

LoopbackService::LoopbackService()
{
    answerAll(Reply::whole("{}"));
    connect(&m_server, &QTcpServer::newConnection, this, &LoopbackService::accept);
    // One port for all tests of a program: the update checker makes its address once.
    static quint16 port = 0;
    if (!m_server.listen(QHostAddress::LocalHost, port))
        qFatal("cannot listen on loopback");
    port = m_server.serverPort();
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

qsizetype LoopbackService::requestsWith(const QByteArray &text) const
{
    return std::ranges::count_if(m_requests, [&](const Request &request) { return request.target.contains(text); });
}

QString LoopbackService::origin() const { return u"http://127.0.0.1:%1"_s.arg(m_server.serverPort()); }

void LoopbackService::accept()
{
    while (QTcpSocket *const socket = m_server.nextPendingConnection()) {
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
    case Reply::Then::KeepAlive:
    case Reply::Then::Silence:
        break;
    }
}
