// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Http/HttpSession.h"
#include "LoopbackService.h"

#include <QCoroTask>
#include <QNetworkProxy>
#include <QTest>
#include <QUrl>

using namespace Qt::StringLiterals;
using Reply = LoopbackService::Reply;

namespace {

const QString unreached = u"failed: The server could not be reached through the proxy server."_s;

void useProxy(const QString &host, int port)
{
    QNetworkProxy::setApplicationProxy({QNetworkProxy::HttpProxy, host, static_cast<quint16>(port)});
}

/// The body, or "failed: " and the description. The host is for the proxy to find.
QString fetch(const QString &scheme)
{
    const auto result = QCoro::waitFor(HttpSession::shared().data(QUrl(scheme + u"://service.invalid/"_s)));
    return result ? QString::fromUtf8(*result) : u"failed: "_s + result.error().description;
}

} // namespace

class ProxyTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// The first, since the session lives as long as the process.
    void initTestCase()
    {
        QNetworkProxyFactory::setUseSystemConfiguration(false);
        HttpSession::shared();
        QVERIFY2(QNetworkProxyFactory::usesSystemConfiguration(), "The session ignores the system's proxies.");
    }

    void init()
    {
        m_service = std::make_unique<LoopbackService>();
        useProxy(u"127.0.0.1"_s, QUrl(m_service->origin()).port());
    }

    void cleanup()
    {
        QNetworkProxyFactory::setUseSystemConfiguration(true);
        m_service.reset();
    }

    void aProxyThatHelpsIsNotNoticed()
    {
        QCOMPARE(fetch(u"http"_s), u"{}"_s);
        QCOMPARE(m_service->requests().value(0).target, "http://service.invalid/"_ba);
    }

    void aProxyThatIsGoneIsTold()
    {
        m_service.reset();
        QCOMPARE(fetch(u"https"_s), unreached);
        useProxy(u"nowhere.invalid"_s, 3128);
        QCOMPARE(fetch(u"https"_s), unreached);
    }

    void aProxyThatRefusesIsTold_data()
    {
        QTest::addColumn<Reply>("reply");
        for (const int status : {403, 404, 503})
            QTest::addRow("%d", status) << Reply::whole("", status);
        QTest::newRow("garbage") << Reply::raw("garbage\r\n\r\n");
        QTest::newRow("nothing") << Reply::raw("");
    }

    void aProxyThatRefusesIsTold()
    {
        QFETCH(const Reply, reply);
        m_service->answerAll(reply);
        QCOMPARE(fetch(u"https"_s), unreached);
    }

    void aProxyThatAsksForAPasswordIsTold()
    {
        m_service->answerAll(Reply::whole("", 407, "Proxy-Authenticate: Basic realm=\"x\"\r\n"));
        QCOMPARE(fetch(u"https"_s), u"failed: The proxy server asks for a password."_s);
    }

    void aTransferThatBreaksOffIsNotBlamedOnTheProxy()
    {
        m_service->answerAll(Reply::reset());
        QCOMPARE(fetch(u"http"_s), u"failed: The connection was lost."_s);
    }

private:
    std::unique_ptr<LoopbackService> m_service;
};

Q_DECLARE_METATYPE(LoopbackService::Reply)

QTEST_GUILESS_MAIN(ProxyTest)
#include "ProxyTest.moc"
