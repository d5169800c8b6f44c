// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Http/SystemProxy.h"

#include <QNetworkProxyFactory>
#include <QUrl>

QByteArray SystemProxy::forServer(const QByteArray &server)
{
    const QNetworkProxyQuery query(QUrl::fromEncoded(server));
    const QNetworkProxy proxy = QNetworkProxyFactory::systemProxyForQuery(query).value(0);
    const bool socks = proxy.type() == QNetworkProxy::Socks5Proxy;
    if (!socks && proxy.type() != QNetworkProxy::HttpProxy)
        return {};
    QUrl address;
    address.setScheme(socks ? QStringLiteral("socks5h") : QStringLiteral("http"));
    address.setHost(proxy.hostName());
    address.setPort(proxy.port());
    address.setUserName(proxy.user());
    address.setPassword(proxy.password());
    return address.toEncoded();
}
