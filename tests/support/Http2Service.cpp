// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Http2Service.h"

#include "LoopbackService.h"

#include <QSslConfiguration>
#include <QSslServer>
#include <QSslSocket>
#include <QtEndian>

using namespace Qt::StringLiterals;

namespace {

const QByteArray preface = "PRI * HTTP/2.0\r\n\r\nSM\r\n\r\n";
constexpr qsizetype frameHeadSize = 9;

enum FrameType : char { Data = 0, Headers = 1, ResetStream = 3, Settings = 4 };
enum FrameFlag : char { None = 0, Acknowledge = 1, EndStream = 1, EndHeaders = 4 };

const QByteArray wholeConnection(4, '\0'); // stream 0

QByteArray frame(FrameType type, int flags, const QByteArray &stream, const QByteArray &payload)
{
    QByteArray length(4, '\0');
    qToBigEndian(static_cast<quint32>(payload.size()), length.data());
    return length.last(3) + char(type) + char(flags) + stream + payload;
}

} // namespace

Http2Service::Http2Service() : m_server(std::make_unique<QSslServer>())
{
    QSslConfiguration configuration = LoopbackService::tlsConfiguration();
    configuration.setAllowedNextProtocols({QSslConfiguration::ALPNProtocolHTTP2});
    m_server->setSslConfiguration(configuration);
    connect(m_server.get(), &QTcpServer::pendingConnectionAvailable, this, &Http2Service::accept);
    if (!m_server->listen(QHostAddress::LocalHost))
        qFatal("cannot listen on loopback");
}

Http2Service::~Http2Service() = default;

QByteArray Http2Service::header(const QByteArray &name, const QByteArray &value)
{
    // A literal field with a new name, neither indexed nor compressed.
    return '\0' + QByteArray(1, static_cast<char>(name.size())) + name +
           QByteArray(1, static_cast<char>(value.size())) + value;
}

QString Http2Service::address() const { return u"https://localhost:%1/"_s.arg(m_server->serverPort()); }

void Http2Service::accept()
{
    while (auto *const socket = qobject_cast<QSslSocket *>(m_server->nextPendingConnection())) {
        ++m_connections;
        connect(socket, &QTcpSocket::readyRead, this, [=, this] { receive(socket); });
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        socket->write(frame(Settings, None, wholeConnection, {}));
    }
}

void Http2Service::receive(QSslSocket *socket)
{
    if (socket->peek(preface.size()) == preface)
        socket->skip(preface.size());
    while (socket->bytesAvailable() >= frameHeadSize) {
        const QByteArray head = socket->peek(frameHeadSize);
        const auto payloadSize =
            static_cast<qsizetype>(qFromBigEndian<quint32>(QByteArray('\0' + head.first(3)).constData()));
        if (socket->bytesAvailable() < frameHeadSize + payloadSize)
            return;
        socket->skip(frameHeadSize + payloadSize);
        if (head[3] == Settings && head[4] != Acknowledge)
            socket->write(frame(Settings, Acknowledge, wholeConnection, {}));
        if (head[3] == Headers)
            send(socket, head.last(4));
    }
}

void Http2Service::send(QSslSocket *socket, const QByteArray &stream)
{
    ++m_requests;
    if (m_reply.then == Reply::Then::Silence)
        return;
    const QByteArray headers = header(":status", QByteArray::number(m_reply.status)) + m_reply.headers;
    socket->write(frame(Headers, EndHeaders, stream, headers));
    const bool whole = m_reply.then == Reply::Then::EndStream;
    socket->write(frame(Data, whole ? EndStream : None, stream, m_reply.body));
    if (m_reply.then == Reply::Then::ResetStream)
        socket->write(frame(ResetStream, None, stream, QByteArray::fromHex("00000002"))); // INTERNAL_ERROR
    if (m_reply.then == Reply::Then::HangUp)
        socket->disconnectFromHost();
}
