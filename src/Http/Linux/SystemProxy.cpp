// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Http/SystemProxy.h"

#include <proxy.h>

#include <memory>

namespace {

using Factory = std::unique_ptr<pxProxyFactory, decltype(&px_proxy_factory_free)>;
using Answers = std::unique_ptr<char *, decltype(&px_proxy_factory_free_proxies)>;

} // namespace

QByteArray SystemProxy::forServer(const QByteArray &server)
{
    const Factory factory(px_proxy_factory_new(), &px_proxy_factory_free);
    const Answers answers(
        px_proxy_factory_get_proxies(factory.get(), server.constData()), &px_proxy_factory_free_proxies);
    QByteArray first = answers ? QByteArray(*answers) : QByteArray();
    if (first.startsWith("direct:"))
        return {};
    // The version that names are resolved by the proxy in, as everywhere else.
    if (first.startsWith("socks:") || first.startsWith("socks5:"))
        return "socks5h" + first.sliced(first.indexOf(':'));
    return first;
}
