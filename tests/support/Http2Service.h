// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QObject>

#include <functional>
#include <memory>

class QSslServer;
class QSslSocket;

/// A server on loopback that speaks HTTP/2 over TLS, as the service does. It reads no headers: every stream gets
/// the same answer.
class Http2Service : public QObject {
    Q_OBJECT

public:
    struct Reply {
        enum class Then { EndStream, ResetStream, HangUp, Silence };

        int status = 200;
        QByteArray body = {};
        QByteArray headers = {}; ///< further ones, as header() makes them
        Then then = Then::EndStream;
    };

    Http2Service();
    ~Http2Service() override;

    void answerAll(const Reply &reply) { m_reply = reply; }

    static QByteArray header(const QByteArray &name, const QByteArray &value);

    QString address() const;
    int connections() const { return m_connections; }
    int requests() const { return m_requests; }

private:
    void accept();
    void receive(QSslSocket *socket);
    void send(QSslSocket *socket, const QByteArray &stream);

    std::unique_ptr<QSslServer> m_server;
    Reply m_reply;
    int m_connections = 0;
    int m_requests = 0;
};
