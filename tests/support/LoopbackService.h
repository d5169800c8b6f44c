// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QTcpServer>
#include <QTcpSocket>

#include <chrono>
#include <functional>
#include <limits>
#include <memory>

class QSslConfiguration;

/// A server on loopback whose every byte a test decides. While it lives, the test deployment points to it.
class LoopbackService : public QObject {
    Q_OBJECT

public:
    struct Request {
        QByteArray target; ///< path and query as they stood on the wire
        QByteArray head;   ///< the whole head of the request
    };

    struct Reply {
        enum class Then { KeepAlive, Close, Reset, Silence, Repeat };

        QByteArray bytes; ///< status line, headers and body
        Then then = Then::KeepAlive;
        QByteArray again = {};                       ///< what Repeat sends on and on, for as long as the client reads
        std::chrono::milliseconds pause{0};          ///< before each of them; without one as fast as they are taken
        int times = std::numeric_limits<int>::max(); ///< how many of them
        QByteArray last = {};                        ///< after them

        /// A whole reply with a Content-Length.
        static Reply whole(const QByteArray &body, int status = 200, const QByteArray &extraHeaders = {});
        /// The bytes as they stand, then the connection closed.
        static Reply raw(const QByteArray &bytes) { return {.bytes = bytes, .then = Then::Close}; }
        static Reply reset() { return {.bytes = {}, .then = Then::Reset}; }
        static Reply silence() { return {.bytes = {}, .then = Then::Silence}; }
    };

    using Answer = std::function<Reply(const Request &)>;

    enum class Transport { Plain, Tls };

    explicit LoopbackService(Transport transport = Transport::Plain);
    ~LoopbackService() override;

    /// Decides the reply to every request from now on. At first every request gets "{}".
    void answer(Answer answer) { m_answer = std::move(answer); }
    /// The same reply to every request from now on.
    void answerAll(const Reply &reply);
    /// Replies by date preset: "today" and "last_7d"; the update feed and all else get "{}".
    void answerInsights(const QByteArray &today, const QByteArray &lastSevenDays);

    /// Replies to the requests that have had none but silence.
    void breakSilence(const Reply &reply);
    /// Nothing arrives any more by the connections that exist now, and nobody is told.
    void loseConnections();

    const QList<Request> &requests() const { return m_requests; }
    /// How many requests had this text in their target.
    qsizetype requestsWith(const QByteArray &text) const;
    int connections() const { return m_connections; }
    QString origin() const;

    /// A certificate for "localhost", made once a process, that every client of the process trusts.
    static QSslConfiguration tlsConfiguration();

Q_SIGNALS:
    void requested();

private:
    void accept();
    void receive(QTcpSocket *socket);
    void send(QTcpSocket *socket, const Reply &reply);
    static void repeat(QTcpSocket *socket, const Reply &reply);

    std::unique_ptr<QTcpServer> m_server;
    Transport m_transport;
    Answer m_answer;
    QList<Request> m_requests;
    QList<QPointer<QTcpSocket>> m_silent;
    int m_connections = 0;
};
