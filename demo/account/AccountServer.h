// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include "GraphService.h"

#include <QList>
#include <QObject>
#include <QTcpServer>

#include <optional>

class QTcpSocket;

/// Serves the demo account and the product's site over HTTP on loopback. The story begins with the first
/// insights request that is answered with figures, and goes by Foundation/Clock.h.
class AccountServer : public QObject {
    Q_OBJECT

public:
    explicit AccountServer(AccountStory story);

    /// Takes any free port where `port` is 0. False, with a reason in errorString(), where it is taken.
    bool listen(quint16 port);
    QString errorString() const { return m_server.errorString(); }
    quint16 port() const { return m_server.serverPort(); }
    QString origin() const;

private:
    void accept();
    void receive(QTcpSocket *socket);
    ServedReply answer(const QUrl &url);
    double minutes() const;
    int countCall();

    QTcpServer m_server;
    GraphService m_graph;
    std::optional<double> m_beginning;
    QList<double> m_calls; ///< in the last hour
};
