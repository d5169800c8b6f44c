// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Http/ProxyDirectory.h"
#include "Http/TransferError.h"
#include "Machine/NetworkWatch.h"

#include <QByteArray>
#include <QCoroTask>
#include <QList>
#include <QObject>
#include <QTimer>
#include <QUrl>

#include <tl/expected.hpp>

#include <memory>

class Connections;
class Transfer;
struct TransferReply;

/// The process-wide HTTP session.
class HttpSession : public QObject {
    Q_OBJECT

public:
    /// A body of more bytes than this counts as a failed transfer.
    static constexpr qsizetype maximumBodySize = qsizetype{16} * 1024 * 1024;

    ~HttpSession() override;

    /// The one session of the process; it goes just before the application object.
    static HttpSession &shared();

    using Result = tl::expected<QByteArray, TransferError>;

    /// Fetches the address with a plain GET and gives the whole body, whatever its HTTP status. The first request after
    /// a sleep or a change of network goes out on a new connection, and what a sleep has cut off begins anew.
    QCoro::Task<Result> data(QUrl url);

    /// Ends every transfer as cancelled, at once, and those that are asked for in consequence.
    void cancelAll();

    /// Lets no later request go out on a connection that exists now, or by a proxy that was named before: they may have
    /// died unnoticed, as in a sleep or a change of network. Transfers that are under way go on.
    void forgetConnections();

private:
    HttpSession();

    QCoro::Task<Result> fetch(QUrl url);
    QCoro::Task<tl::expected<TransferReply, TransferError>> transfer(QUrl url);

    std::shared_ptr<Connections> m_connections; // transfers under way hold what was forgotten since they began
    ProxyDirectory m_proxies;
    NetworkWatch m_network;
    QList<Transfer *> m_underWay;
    QTimer m_idle;
    bool m_cancelling = false;
};
