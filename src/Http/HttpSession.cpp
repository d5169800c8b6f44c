// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Http/HttpSession.h"

#include "Foundation/Deployment.h"

#include <QCoreApplication>
#include <QCoroNetworkReply>
#include <QNetworkAccessManager>
#include <QNetworkProxy>
#include <QNetworkProxyFactory>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QPointer>
#include <QScopedValueRollback>

#include <optional>

using namespace Qt::StringLiterals;

namespace {

/// Neither the error nor the status tells a page that was served with an error status from a transfer that broke off:
/// a broken compressed body with status 200 reports the same error as a whole reply with 429. But Qt names the address
/// for served pages alone, and for all of them except those that ask for a password.
bool wasServed(const QNetworkReply &reply)
{
    switch (reply.error()) {
    case QNetworkReply::NoError:
    case QNetworkReply::AuthenticationRequiredError:
        return true;
    case QNetworkReply::ProxyAuthenticationRequiredError: // of a page; or of the proxy itself, which made no tunnel
        return reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt() == 407;
    default:
        return reply.errorString().contains(reply.url().toString());
    }
}

/// Qt does not always notice that a body ended before its announced length.
bool isCutShort(const QNetworkReply &reply)
{
    const QVariant announced = reply.header(QNetworkRequest::ContentLengthHeader); // none where Qt decompressed
    return announced.isValid() && reply.bytesAvailable() < announced.toLongLong();
}

/// Qt's own error text quotes the whole address, access token included, so every text here is ours.
QString describe(QNetworkReply::NetworkError error)
{
    switch (error) {
    case QNetworkReply::ConnectionRefusedError:
        return u"The server refused the connection."_s;
    case QNetworkReply::RemoteHostClosedError:
        return u"The connection was lost."_s;
    case QNetworkReply::HostNotFoundError:
        return u"The server could not be found."_s;
    case QNetworkReply::TimeoutError:
    case QNetworkReply::OperationCanceledError: // Qt's transfer timeout cancels
        return u"The request timed out."_s;
    case QNetworkReply::SslHandshakeFailedError:
        return u"A secure connection to the server could not be made."_s;
    case QNetworkReply::TemporaryNetworkFailureError:
    case QNetworkReply::NetworkSessionFailedError:
    case QNetworkReply::UnknownNetworkError:
        return u"The network is not reachable."_s;
    case QNetworkReply::TooManyRedirectsError:
    case QNetworkReply::InsecureRedirectError:
        return u"The server redirected the request in a way that cannot be followed."_s;
    case QNetworkReply::ProxyAuthenticationRequiredError:
        return u"The proxy server asks for a password."_s;
    default:
        return u"The server’s reply could not be read."_s;
    }
}

/// The classes in which Qt reports that no connection came about: a proxy that fails is among them, nameless.
bool isUnreached(QNetworkReply::NetworkError error)
{
    switch (error) {
    case QNetworkReply::ConnectionRefusedError:
    case QNetworkReply::HostNotFoundError:
    case QNetworkReply::UnknownNetworkError:
    case QNetworkReply::ProxyConnectionRefusedError:
    case QNetworkReply::ProxyConnectionClosedError:
    case QNetworkReply::ProxyNotFoundError:
    case QNetworkReply::ProxyTimeoutError:
    case QNetworkReply::UnknownProxyError:
        return true;
    default:
        return false;
    }
}

bool goesThroughProxy(const QUrl &url)
{
    return QNetworkProxyFactory::proxyForQuery(QNetworkProxyQuery(url)).value(0).type() != QNetworkProxy::NoProxy;
}

/// What the user is told of the transfer; nothing where the whole body arrived.
std::optional<QString> failureOf(const QNetworkReply &reply)
{
    if (!wasServed(reply)) {
        return isUnreached(reply.error()) && goesThroughProxy(reply.url())
                   ? u"The server could not be reached through the proxy server."_s
                   : describe(reply.error());
    }
    if (isCutShort(reply))
        return describe(QNetworkReply::RemoteHostClosedError);
    return {};
}

} // namespace

HttpSession &HttpSession::shared()
{
    static QPointer<HttpSession> session;
    if (!session) {
        session = new HttpSession;
        // Not a child of the application: those go when it is no longer there, and Qt's network thread asks for
        // it while it closes its TLS connections.
        qAddPostRoutine([] { delete session; });
    }
    return *session;
}

HttpSession::HttpSession() : m_manager(std::make_unique<QNetworkAccessManager>())
{
    // Set either way, because the default differs between builds of Qt.
    QNetworkProxyFactory::setUseSystemConfiguration(true);
}

HttpSession::~HttpSession() = default;

QCoro::Task<tl::expected<QByteArray, TransferError>> HttpSession::data(QUrl url)
{
    QNetworkRequest request(url);
    request.setTransferTimeout(static_cast<int>(Deployment::transferTimeout().count()));
    const std::unique_ptr<QNetworkReply, QScopedPointerDeleteLater> reply(m_manager->get(request));
    // While bytes come faster than Qt handles them it announces none, so it needs a bound of its own. That one
    // counts them as they are sent, and compressed they may be the more.
    reply->setReadBufferSize(2 * maximumBodySize);
    bool tooLarge = false;
    connect(reply.get(), &QIODevice::readyRead, reply.get(), [reply = reply.get(), &tooLarge] {
        if (reply->bytesAvailable() > maximumBodySize && !tooLarge) {
            tooLarge = true;
            reply->abort();
        }
    });

    ++m_inFlight;
    co_await reply.get();
    --m_inFlight;

    if (m_cancelling)
        co_return tl::unexpected(TransferError{.description = u"Cancelled."_s, .cancelled = true});
    const bool fits = !tooLarge && reply->bytesAvailable() <= maximumBodySize;
    const std::optional<QString> failure = fits ? failureOf(*reply) : u"The server’s reply is too large."_s;
    m_connectionsSuspect = m_connectionsSuspect || failure;
    forgetDeadConnections();
    if (failure)
        co_return tl::unexpected(TransferError{.description = *failure});
    co_return reply->readAll();
}

void HttpSession::forgetConnections()
{
    m_connectionsSuspect = true;
    forgetDeadConnections();
}

void HttpSession::forgetDeadConnections()
{
    // After a change of network a dead connection may be reused for ever. Clearing the cache kills whatever
    // else is in flight, so the last transfer does it, once it is no longer on the stack.
    const auto clear = [this] {
        if (!m_connectionsSuspect || m_inFlight > 0)
            return;
        m_connectionsSuspect = false;
        m_manager->clearConnectionCache();
    };
    QMetaObject::invokeMethod(this, clear, Qt::QueuedConnection);
}

void HttpSession::cancelAll()
{
    const QScopedValueRollback cancelling(m_cancelling, true);
    // A task that goes on at its end may begin another transfer, so the list is made anew.
    while (m_inFlight > 0) {
        const auto replies = m_manager->findChildren<QNetworkReply *>();
        for (QNetworkReply *reply : replies)
            reply->abort();
    }
}
