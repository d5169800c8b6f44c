// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "AccountServer.h"

#include "Foundation/Clock.h"
#include "ProductSite.h"

#include <QTcpSocket>

using namespace Qt::StringLiterals;

namespace {

constexpr QByteArrayView endOfHead = "\r\n\r\n";
constexpr qsizetype longestHead = 65'536;

QByteArray reasonPhrase(int status)
{
    switch (status) {
    case 200:
        return "OK";
    case 400:
        return "Bad Request";
    case 404:
        return "Not Found";
    default:
        return "Method Not Allowed";
    }
}

/// Sent in chunks and never to be kept, as the real service does.
QByteArray onTheWire(const ServedReply &reply)
{
    QByteArray head = "HTTP/1.1 " + QByteArray::number(reply.status) + ' ' + reasonPhrase(reply.status) +
                      "\r\nContent-Type: " + reply.contentType +
                      "\r\nCache-Control: private, no-cache, no-store, must-revalidate"
                      "\r\nPragma: no-cache\r\nVary: Accept-Encoding\r\nfacebook-api-version: v21.0"
                      "\r\nTransfer-Encoding: chunked\r\n";
    if (!reply.challenge.isEmpty())
        head += "WWW-Authenticate: " + reply.challenge + "\r\n";
    const QByteArray chunk = QByteArray::number(reply.body.size(), 16) + "\r\n" + reply.body + "\r\n";
    return head + "\r\n" + (reply.body.isEmpty() ? QByteArray() : chunk) + "0\r\n\r\n";
}

} // namespace

AccountServer::AccountServer(AccountStory story) : m_graph(story)
{
    connect(&m_server, &QTcpServer::newConnection, this, &AccountServer::accept);
}

bool AccountServer::listen(quint16 port) { return m_server.listen(QHostAddress::LocalHost, port); }

QString AccountServer::origin() const { return u"http://127.0.0.1:%1"_s.arg(port()); }

void AccountServer::accept()
{
    while (QTcpSocket *const socket = m_server.nextPendingConnection()) {
        connect(socket, &QTcpSocket::readyRead, this, [=, this] { receive(socket); });
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    }
}

void AccountServer::receive(QTcpSocket *socket)
{
    while (true) {
        const QByteArray waiting = socket->peek(longestHead);
        const qsizetype end = waiting.indexOf(endOfHead);
        if (end < 0) {
            if (waiting.size() == longestHead)
                socket->abort();
            return;
        }
        const QByteArray head = socket->read(end + endOfHead.size());
        const QList<QByteArray> requestLine = head.first(head.indexOf('\r')).split(' ');
        if (requestLine.value(0) != "GET") {
            // What follows may be a body that nobody here wants to read.
            socket->write(onTheWire({.status = 405, .contentType = "text/plain", .body = "Only GET is served.\n"}));
            socket->disconnectFromHost();
            return;
        }
        socket->write(onTheWire(answer(QUrl::fromEncoded(requestLine.value(1)))));
    }
}

ServedReply AccountServer::answer(const QUrl &url)
{
    if (!GraphService::serves(url))
        return ProductSite::answer(url, origin(), minutes());
    ServedReply reply = m_graph.answer(url, {.minutes = minutes(), .callsInLastHour = countCall()});
    if (!m_beginning && reply.status == 200)
        m_beginning = secondsSince1970();
    return reply;
}

double AccountServer::minutes() const
{
    const double now = secondsSince1970();
    return (now - m_beginning.value_or(now)) / 60.0;
}

int AccountServer::countCall()
{
    const double now = secondsSince1970();
    m_calls.removeIf([now](double call) { return call <= now - 3600.0; });
    m_calls.append(now);
    return static_cast<int>(m_calls.size());
}
