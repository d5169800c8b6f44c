// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Http/Transfer.h"

#include "Foundation/Deployment.h"
#include "Http/FailureText.h"
#include "Http/HttpSession.h"

#include <QCoreApplication>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// Bytes of a reply's headers; libcurl's own bound, where it has one, is a little higher.
constexpr std::size_t maximumHeaderSize = std::size_t{256} * 1024;

/// Only what differs from libcurl's defaults, which know no cookies, no cache and no passwords of the system's.
void setOptions(CURL *transfer, const QByteArray &address, const QByteArray &proxy)
{
    curl_easy_setopt(transfer, CURLOPT_URL, address.constData());
    curl_easy_setopt(transfer, CURLOPT_PROTOCOLS_STR, "http,https");
    curl_easy_setopt(transfer, CURLOPT_PATH_AS_IS, 1L);
    curl_easy_setopt(transfer, CURLOPT_ACCEPT_ENCODING, ""); // all that it can read
    curl_easy_setopt(transfer, CURLOPT_USERAGENT,
        (QCoreApplication::applicationName() + u'/' + QCoreApplication::applicationVersion()).toUtf8().constData());
    curl_easy_setopt(transfer, CURLOPT_SSLVERSION, static_cast<long>(CURL_SSLVERSION_TLSv1_2));
    // Neither signals nor a name server that does not answer are any business of the rest of the program.
    curl_easy_setopt(transfer, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(transfer, CURLOPT_QUICK_EXIT, 1L);
    // The system has been asked for the proxy; the environment variables that libcurl knows are part of its answer.
    curl_easy_setopt(transfer, CURLOPT_PROXY, proxy.constData());
    curl_easy_setopt(transfer, CURLOPT_NOPROXY, "");
    curl_easy_setopt(transfer, CURLOPT_PROXYAUTH, static_cast<long>(CURLAUTH_ANY));
    curl_easy_setopt(transfer, CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L);
}

/// Where libcurl knows a folder of certificate authorities, the one at need is looked up there. Reading all of them
/// from one file takes longer than the rest of a connection.
void trustAuthorities(CURL *transfer)
{
    const QByteArray own = Deployment::trustedAuthorities().toUtf8();
    const char *const folder = curl_version_info(CURLVERSION_NOW)->capath;
    if (!own.isEmpty())
        curl_easy_setopt(transfer, CURLOPT_CAINFO, own.constData());
    else if (folder != nullptr && *folder != '\0')
        curl_easy_setopt(transfer, CURLOPT_CAINFO, nullptr);
}

} // namespace

Transfer::Transfer(QUrl url, std::shared_ptr<Connections> connections, const QFuture<QByteArray> &proxy)
    : m_url(std::move(url)), m_connections(std::move(connections))
{
    m_silence.setInterval(Deployment::transferTimeout());
    connect(&m_silence, &QTimer::timeout, this, [this] { fail(FailureText::timedOut()); });
    m_silence.start();
    connect(&m_proxy, &QFutureWatcher<QByteArray>::finished, this, &Transfer::begin);
    m_proxy.setFuture(proxy);
}

Transfer::~Transfer()
{
    if (m_curl)
        m_connections->withdraw(m_curl.get());
}

void Transfer::begin()
{
    if (m_outcome)
        return; // it was too late
    m_curl.reset(curl_easy_init());
    setOptions(m_curl.get(), m_url.toEncoded(), m_proxy.result());
    trustAuthorities(m_curl.get());
    curl_easy_setopt(m_curl.get(), CURLOPT_HEADERFUNCTION, &Transfer::readHeader);
    curl_easy_setopt(m_curl.get(), CURLOPT_HEADERDATA, this);
    curl_easy_setopt(m_curl.get(), CURLOPT_WRITEFUNCTION, &Transfer::readBody);
    curl_easy_setopt(m_curl.get(), CURLOPT_WRITEDATA, this);
    m_connections->begin(m_curl.get(), [this](CURLcode code) { finish(code); });
}

std::size_t Transfer::readHeader(const char *, std::size_t size, std::size_t count, void *self)
{
    auto *const transfer = static_cast<Transfer *>(self);
    transfer->m_silence.start();
    transfer->m_headerSize += size * count;
    return transfer->m_headerSize <= maximumHeaderSize ? size * count : 0; // which ends it with a write error
}

std::size_t Transfer::readBody(const char *bytes, std::size_t size, std::size_t count, void *self)
{
    auto *const transfer = static_cast<Transfer *>(self);
    transfer->m_silence.start();
    transfer->m_body.append(bytes, static_cast<qsizetype>(size) * static_cast<qsizetype>(count));
    return transfer->m_body.size() <= HttpSession::maximumBodySize ? size * count : 0;
}

void Transfer::finish(CURLcode code)
{
    if (code != CURLE_OK) {
        fail(code == CURLE_WRITE_ERROR ? FailureText::tooLarge()
                                       : FailureText::describe(m_curl.get(), code, !m_proxy.result().isEmpty()));
        return;
    }
    long status = 0;
    curl_easy_getinfo(m_curl.get(), CURLINFO_RESPONSE_CODE, &status);
    constexpr long firstFinalStatus = 200;
    if (status < firstFinalStatus) {
        fail(FailureText::unreadable());
        return;
    }
    const char *redirection = nullptr;
    curl_easy_getinfo(m_curl.get(), CURLINFO_REDIRECT_URL, &redirection);
    TransferReply reply{.body = std::move(m_body), .redirection = {}};
    if (redirection != nullptr)
        reply.redirection = QUrl::fromEncoded(redirection);
    end(std::move(reply));
}

void Transfer::fail(const QString &description) { end(tl::unexpected(TransferError{.description = description})); }

void Transfer::end(Outcome outcome)
{
    if (m_outcome)
        return;
    m_outcome = std::move(outcome);
    m_silence.stop();
    if (m_curl)
        m_connections->withdraw(m_curl.get());
    QMetaObject::invokeMethod(
        this, [this] { m_waiting.resume(); }, Qt::QueuedConnection);
}

void Transfer::cancel()
{
    fail({}); // unless it has ended otherwise; either way nobody wants the outcome
    m_outcome = tl::unexpected(TransferError::cancellation());
    m_waiting.resume();
}
