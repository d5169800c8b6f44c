// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Http/HttpSession.h"

#include "Http/FailureText.h"
#include "Http/Transfer.h"
#include "Machine/MachineTime.h"

#include <QCoreApplication>
#include <QPointer>
#include <QScopedValueRollback>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr int maximumRedirections = 50;

/// For how long a connection without a transfer is kept. It serves the next request of a refresh, and is closed before
/// the server might do so: a request that crosses with that is sent twice.
constexpr std::chrono::seconds connectionLife = 30s;

/// Never away from TLS.
bool mayFollow(const QUrl &from, const QUrl &to)
{
    return to.isValid() && (to.scheme() == "https"_L1 || (to.scheme() == "http"_L1 && from.scheme() == "http"_L1));
}

} // namespace

HttpSession &HttpSession::shared()
{
    static QPointer<HttpSession> session;
    if (!session) {
        session = new HttpSession;
        qAddPostRoutine([] { delete session; });
    }
    return *session;
}

HttpSession::HttpSession()
{
    curl_global_init(CURL_GLOBAL_DEFAULT); // never undone: a thread of libcurl's may still look up a name at the end
    m_idle.setSingleShot(true);
    m_idle.setInterval(connectionLife);
    connect(&m_idle, &QTimer::timeout, this, &HttpSession::forgetConnections);
}

HttpSession::~HttpSession() = default;

QCoro::Task<HttpSession::Result> HttpSession::data(QUrl url)
{
    while (true) {
        if (m_network.sawChange())
            forgetConnections();
        const auto asleep = MachineTime::asleep();
        Result body = co_await fetch(url);
        // Amid a sleep the best of connections dies, and nobody has failed. It ends by its time-out, which counts the
        // time awake.
        if (body || body.error().cancelled || !MachineTime::hasSleptSince(asleep))
            co_return body;
    }
}

/// Follows redirections.
QCoro::Task<HttpSession::Result> HttpSession::fetch(QUrl url)
{
    if (!url.isValid())
        co_return tl::unexpected(TransferError{.description = FailureText::unreadable()});
    QUrl address = url;
    for (int redirections = 0; redirections <= maximumRedirections; ++redirections) {
        const Transfer::Outcome outcome = co_await transfer(address);
        if (!outcome)
            co_return tl::unexpected(outcome.error());
        if (!outcome->redirection)
            co_return outcome->body;
        if (!mayFollow(address, *outcome->redirection))
            break;
        address = *outcome->redirection;
    }
    co_return tl::unexpected(TransferError{.description = FailureText::redirectedAstray()});
}

QCoro::Task<tl::expected<TransferReply, TransferError>> HttpSession::transfer(QUrl url)
{
    if (m_cancelling)
        co_return tl::unexpected(TransferError::cancellation());
    if (!m_connections)
        m_connections = std::make_shared<Connections>();
    Transfer transfer(url, m_connections, m_proxies.proxyFor(url));
    m_idle.stop();
    m_underWay.append(&transfer);
    Transfer::Outcome outcome = co_await transfer.outcome();
    m_underWay.removeOne(&transfer);
    if (!outcome)
        forgetConnections(); // after a change of network a dead one might be used for ever
    if (m_underWay.isEmpty())
        m_idle.start();
    co_return outcome;
}

void HttpSession::cancelAll()
{
    const QScopedValueRollback cancelling(m_cancelling, true);
    while (!m_underWay.isEmpty())
        m_underWay.constLast()->cancel();
}

void HttpSession::forgetConnections()
{
    m_connections.reset();
    m_proxies.forgetAnswers();
}
