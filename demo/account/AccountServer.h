// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include "GraphService.h"

#include <QElapsedTimer>
#include <QList>
#include <QObject>
#include <QTcpServer>

class QTcpSocket;

/// Serves the demo account and the product's site over HTTP on loopback. The story begins with the first
/// insights request that is answered with figures.
class AccountServer : public QObject {
    Q_OBJECT

public:
    /// `speed` tells how many seconds of the story pass in a real one.
    AccountServer(AccountStory story, double speed);

    /// Takes any free port where `port` is 0. False, with a reason in errorString(), where it is taken.
    bool listen(quint16 port);
    QString errorString() const { return m_server.errorString(); }
    QString origin() const;

private:
    void accept();
    void receive(QTcpSocket *socket);
    ServedReply answer(const QUrl &url);
    double minutes() const;
    int countCall();

    QTcpServer m_server;
    GraphService m_graph;
    double m_speed;
    QElapsedTimer m_sinceBeginning; ///< invalid until the story begins
    QList<double> m_calls;          ///< in the last hour, in minutes of the story
};
