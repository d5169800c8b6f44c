// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QCoroTask>
#include <QObject>
#include <QString>
#include <QUrl>

#include <tl/expected.hpp>

#include <memory>

class QNetworkAccessManager;

/// A transfer that brought no whole body.
struct TransferError {
    QString description;    ///< a short sentence for the user; never holds an address
    bool cancelled = false; ///< by cancelAll(): the program ends and there is nobody left to tell
};

/// The process-wide HTTP session.
class HttpSession : public QObject {
    Q_OBJECT

public:
    /// A body of more bytes than this counts as a failed transfer.
    static constexpr qint64 maximumBodySize = qint64{16} * 1024 * 1024;

    ~HttpSession() override;

    /// The one session of the process; it goes just before the application object.
    static HttpSession &shared();

    /// Fetches the address with a plain GET and gives the whole body, whatever its HTTP status.
    QCoro::Task<tl::expected<QByteArray, TransferError>> data(QUrl url);

    /// Ends every transfer as cancelled, at once, and those that are asked for in consequence.
    void cancelAll();

    /// Lets no later request go out on a connection that exists now: it may have died unnoticed, as in a sleep or a
    /// change of network. Transfers that are under way go on.
    void forgetConnections();

private:
    HttpSession();

    void forgetDeadConnections();

    std::unique_ptr<QNetworkAccessManager> m_manager;
    int m_inFlight = 0;
    bool m_connectionsSuspect = false;
    bool m_cancelling = false;
};
