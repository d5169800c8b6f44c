// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Http/FailureText.h"

#include <cerrno>

using namespace Qt::StringLiterals;

namespace {

template <class Value>
Value asked(CURL *transfer, CURLINFO info)
{
    Value value{};
    curl_easy_getinfo(transfer, info, &value);
    return value;
}

QString withoutConnection(CURL *transfer)
{
    switch (asked<long>(transfer, CURLINFO_OS_ERRNO)) {
    case ECONNREFUSED:
        return u"The server refused the connection."_s;
    case ETIMEDOUT:
        return FailureText::timedOut();
    default:
        return u"The network is not reachable."_s;
    }
}

QString describeDirect(CURL *transfer, CURLcode code)
{
    switch (code) {
    case CURLE_COULDNT_RESOLVE_HOST:
        return u"The server could not be found."_s;
    case CURLE_COULDNT_CONNECT:
        return withoutConnection(transfer);
    case CURLE_OPERATION_TIMEDOUT:
        return FailureText::timedOut();
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_CACERT_BADFILE:
        return u"A secure connection to the server could not be made."_s;
    case CURLE_GOT_NOTHING:
    case CURLE_PARTIAL_FILE:
    case CURLE_RECV_ERROR:
    case CURLE_SEND_ERROR:
        return u"The connection was lost."_s;
    default:
        return FailureText::unreadable();
    }
}

/// Whether the way to the server, which leads through a proxy, ended before the server.
bool endedAtProxy(CURL *transfer, CURLcode code)
{
    switch (code) {
    case CURLE_COULDNT_RESOLVE_PROXY:
    case CURLE_COULDNT_RESOLVE_HOST: // some proxies leave that to the client
    case CURLE_COULDNT_CONNECT:
    case CURLE_PROXY:
        return true;
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_CACERT_BADFILE:
        return false;
    default: // no tunnel came about that TLS could be spoken in
        return qstrncmp(asked<const char *>(transfer, CURLINFO_EFFECTIVE_URL), "https:", 6) == 0 &&
               asked<curl_off_t>(transfer, CURLINFO_APPCONNECT_TIME_T) == 0;
    }
}

} // namespace

QString FailureText::describe(CURL *transfer, CURLcode code, bool throughProxy)
{
    if (!throughProxy || !endedAtProxy(transfer, code))
        return describeDirect(transfer, code);
    constexpr long authenticationRequired = 407;
    return asked<long>(transfer, CURLINFO_HTTP_CONNECTCODE) == authenticationRequired
               ? u"The proxy server asks for a password."_s
               : u"The server could not be reached through the proxy server."_s;
}

QString FailureText::timedOut() { return u"The request timed out."_s; }

QString FailureText::tooLarge() { return u"The server’s reply is too large."_s; }

QString FailureText::redirectedAstray()
{
    return u"The server redirected the request in a way that cannot be followed."_s;
}

QString FailureText::unreadable() { return u"The server’s reply could not be read."_s; }
