// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Http/HttpSession.h"
#include "Http2Service.h"
#include "TestDeployment.h"

#include <QCoroTask>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using Reply = Http2Service::Reply;

Q_DECLARE_METATYPE(Http2Service::Reply)

namespace {

const QByteArray body = "{\"figures\": \"whole\"}";
const QByteArray longer = Http2Service::header("content-length", "100");

} // namespace

/// The protocol that the service itself speaks.
class Http2Test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_service = std::make_unique<Http2Service>(); }
    void cleanup()
    {
        m_service.reset();
        TestDeployment::setTransferTimeout(30s);
    }

    void theBodyCountsAtEveryStatus_data()
    {
        QTest::addColumn<int>("status");
        for (const int status : {200, 400, 401, 403, 404, 407, 429, 500, 503})
            QTest::addRow("%d", status) << status;
    }

    void theBodyCountsAtEveryStatus()
    {
        QFETCH(const int, status);
        m_service->answerAll({.status = status, .body = body});
        QCOMPARE(fetch(), QString::fromUtf8(body));
        QCOMPARE(m_service->requests(), 1);
    }

    void aTransferThatBreaksOffIsNoBody_data()
    {
        QTest::addColumn<Reply>("reply");
        QTest::addColumn<QString>("description");
        using Then = Reply::Then;
        const QString lost = u"failed: The connection was lost."_s;
        const QString broken = u"failed: The server’s reply could not be read."_s;
        for (const int status : {200, 400, 401, 407, 429, 500}) {
            QTest::addRow("hung up, %d", status) << Reply{.status = status, .body = body, .then = Then::HangUp} << lost;
            QTest::addRow("cut short, %d", status)
                << Reply{.status = status, .body = body, .headers = longer} << broken;
            QTest::addRow("reset, %d", status)
                << Reply{.status = status, .body = body, .then = Then::ResetStream} << broken;
        }
    }

    void aTransferThatBreaksOffIsNoBody()
    {
        QFETCH(const Reply, reply);
        m_service->answerAll(reply);
        QTEST(fetch(), "description");
    }

    void silenceTimesOut()
    {
        TestDeployment::setTransferTimeout(300ms);
        m_service->answerAll({.then = Reply::Then::Silence});
        QCOMPARE(fetch(), u"failed: The request timed out."_s);
    }

    void oneConnectionServesManyRequests()
    {
        for (int i = 0; i < 5; ++i)
            fetch();
        QCOMPARE(m_service->connections(), 1);
    }

    /// As after a change of network: the connection looks open, and nothing comes back on it.
    void aConnectionThatWentDeadIsNotUsedAgain()
    {
        m_service->answerAll({.body = body});
        QCOMPARE(fetch(), QString::fromUtf8(body));
        TestDeployment::setTransferTimeout(300ms);
        m_service->answerAll({.then = Reply::Then::Silence});
        QCOMPARE(fetch(), u"failed: The request timed out."_s);
        QCOMPARE(m_service->connections(), 1);
        TestDeployment::setTransferTimeout(30s);
        m_service->answerAll({.body = body});
        QCOMPARE(fetch(), QString::fromUtf8(body));
        QCOMPARE(m_service->connections(), 2);
    }

private:
    /// The body, or "failed: " and the description.
    QString fetch()
    {
        const auto result = QCoro::waitFor(HttpSession::shared().data(QUrl(m_service->address())));
        return result ? QString::fromUtf8(*result) : u"failed: "_s + result.error().description;
    }

    std::unique_ptr<Http2Service> m_service;
};

QTEST_GUILESS_MAIN(Http2Test)
#include "Http2Test.moc"
