// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Http/HttpSession.h"
#include "LoopbackService.h"
#include "TestDeployment.h"

#include <QAbstractEventDispatcher>
#include <QCoroTask>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using Reply = LoopbackService::Reply;

Q_DECLARE_METATYPE(LoopbackService::Reply)

namespace {

const QByteArray body = "{\"figures\": \"whole\"}";

/// The body, or "failed: " and the description.
QString outcome(tl::expected<QByteArray, TransferError> result)
{
    return result ? QString::fromUtf8(*result) : u"failed: "_s + result.error().description;
}

QString fetch(const QString &address) { return outcome(QCoro::waitFor(HttpSession::shared().data(QUrl(address)))); }

/// The words that zlib finds right, then a byte that it does not.
QByteArray brokenGzip() { return QByteArray::fromHex("1f8b0800000000000003") + QByteArray(40, '\xff'); }

} // namespace

class HttpSessionTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".*"_s)); // they would stand in the program's output
        m_service = std::make_unique<LoopbackService>();
    }
    void cleanup()
    {
        m_service.reset();
        TestDeployment::setTransferTimeout(30s);
    }

    void theBodyCountsAtEveryStatus_data()
    {
        QTest::addColumn<int>("status");
        for (const int status :
            {200, 201, 203, 400, 401, 402, 403, 404, 405, 407, 409, 410, 418, 422, 429, 500, 501, 502, 503, 504, 599}) {
            QTest::addRow("%d", status) << status;
        }
    }

    void theBodyCountsAtEveryStatus()
    {
        QFETCH(const int, status);
        m_service->answerAll(Reply::whole(body, status));
        QCOMPARE(fetch(address()), QString::fromUtf8(body));
        QCOMPARE(m_service->requests().size(), 1);
    }

    void anOddChallengeDoesNotHideTheBody()
    {
        m_service->answerAll(Reply::whole(body, 401,
            "WWW-Authenticate: OAuth \"Facebook Platform\" \"invalid_token\" \"Invalid OAuth access token.\"\r\n"));
        QCOMPARE(fetch(address()), QString::fromUtf8(body));
    }

    void chunkedBodiesAreJoined()
    {
        m_service->answerAll(Reply::raw("HTTP/1.1 400 Bad\r\nTransfer-Encoding: chunked\r\n\r\n"
                                        "2\r\n{}\r\n1\r\n \r\n0\r\n\r\n"));
        QCOMPARE(fetch(address()), u"{} "_s);
    }

    void compressedBodiesAreRead()
    {
        // gzip of "{}"
        const QByteArray gzip = QByteArray::fromHex("1f8b0800000000000003abae050043bfa6a302000000");
        m_service->answerAll(Reply::whole(gzip, 200, "Content-Encoding: gzip\r\n"));
        QCOMPARE(fetch(address()), u"{}"_s);
    }

    void aTransferThatBreaksOffIsNoBody_data()
    {
        QTest::addColumn<Reply>("reply");
        QTest::addColumn<QString>("description");
        const QString lost = u"failed: The connection was lost."_s;
        QTest::newRow("cut short") << Reply::raw("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n" + body) << lost;
        QTest::newRow("cut short with an error status")
            << Reply::raw("HTTP/1.1 400 Bad\r\nContent-Length: 100\r\n\r\n" + body) << lost;
        QTest::newRow("cut short between chunks")
            << Reply::raw("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n2\r\n{}\r\n") << lost;
        QTest::newRow("cut short between chunks with an error status")
            << Reply::raw("HTTP/1.1 400 Bad\r\nTransfer-Encoding: chunked\r\n\r\n2\r\n{}\r\n") << lost;
        QTest::newRow("cut short within a chunk with an error status")
            << Reply::raw("HTTP/1.1 500 Bad\r\nTransfer-Encoding: chunked\r\n\r\n9\r\n{}") << lost;
        QTest::newRow("closed before a reply") << Reply::raw("") << lost;
        QTest::newRow("reset") << Reply::reset() << lost;
    }

    /// Over TLS, as every transfer of the product: on a bare socket Qt 6.4 takes a chunked body that breaks off
    /// for a whole one now and then.
    void aTransferThatBreaksOffIsNoBody()
    {
        m_service = std::make_unique<LoopbackService>(LoopbackService::Transport::Tls);
        QFETCH(const Reply, reply);
        m_service->answerAll(reply);
        QTEST(fetch(address()), "description");
    }

    void aBodyShorterThanAnnouncedIsNoBodyOnABareSocketEither()
    {
        for (const char *status : {"200 OK", "400 Bad", "500 Bad"}) {
            m_service->answerAll(
                Reply::raw("HTTP/1.1 " + QByteArray(status) + "\r\nContent-Length: 100\r\n\r\n" + body));
            for (int i = 0; i < 10; ++i)
                QCOMPARE(fetch(address()), u"failed: The connection was lost."_s);
        }
    }

    void aBrokenCompressedBodyIsNoBody_data()
    {
        QTest::addColumn<int>("status");
        for (const int status : {200, 400, 401, 403, 407, 429, 500, 503})
            QTest::addRow("%d", status) << status;
    }

    void aBrokenCompressedBodyIsNoBody()
    {
        QFETCH(const int, status);
        m_service->answerAll(Reply::whole(brokenGzip(), status, "Content-Encoding: gzip\r\n"));
        QCOMPARE(fetch(address()), u"failed: The server’s reply could not be read."_s);
    }

    void silenceTimesOut()
    {
        TestDeployment::setTransferTimeout(50ms);
        m_service->answerAll(Reply::silence());
        QCOMPARE(fetch(address()), u"failed: The request timed out."_s);
    }

    /// A socket that can be written to, which is most of the time, wakes nobody who has nothing to write.
    void waitingForAnAnswerWakesNothing()
    {
        m_service->answerAll(Reply::silence());
        auto task = HttpSession::shared().data(QUrl(address()));
        QTRY_COMPARE(m_service->requests().size(), 1);
        QTest::qWait(50); // what the sending has left to do
        QSignalSpy wakeUps(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::awake);
        QTest::qWait(200);
        QVERIFY2(wakeUps.size() < 100, qPrintable(QString::number(wakeUps.size())));
        HttpSession::shared().cancelAll();
        QVERIFY(!QCoro::waitFor(task));
    }

    /// Early hints and the like come before the answer, and several of them.
    void whatComesBeforeTheAnswerIsPassedOver_data()
    {
        QTest::addColumn<QByteArray>("before");
        const QByteArray hints = "HTTP/1.1 103 Early Hints\r\nLink: </style.css>; rel=preload\r\n\r\n";
        QTest::newRow("100") << "HTTP/1.1 100 Continue\r\n\r\n"_ba;
        QTest::newRow("102") << "HTTP/1.1 102 Processing\r\n\r\n"_ba;
        QTest::newRow("103") << hints;
        QTest::newRow("several") << "HTTP/1.1 102 Processing\r\n\r\n" + hints + hints;
    }

    void whatComesBeforeTheAnswerIsPassedOver()
    {
        QFETCH(const QByteArray, before);
        m_service->answer([before](const LoopbackService::Request &request) {
            Reply reply = Reply::whole(request.target);
            reply.bytes.prepend(before);
            return reply;
        });
        auto first = HttpSession::shared().data(QUrl(m_service->origin() + u"/first"_s));
        auto second = HttpSession::shared().data(QUrl(m_service->origin() + u"/second"_s));
        QCOMPARE(outcome(QCoro::waitFor(first)), u"/first"_s);
        QCOMPARE(outcome(QCoro::waitFor(second)), u"/second"_s);
        QCOMPARE(fetch(m_service->origin() + u"/third"_s), u"/third"_s);
    }

    void aChangeOfProtocolIsNoAnswer()
    {
        m_service->answerAll(Reply::raw("HTTP/1.1 101 Switching Protocols\r\nUpgrade: x\r\n\r\n" + body));
        QVERIFY(fetch(address()).startsWith(u"failed: "));
        m_service->answerAll(Reply::whole(body));
        QCOMPARE(fetch(address()), QString::fromUtf8(body));
    }

    void anInvalidAddressIsNeverServed()
    {
        QCOMPARE(fetch(QString()), u"failed: The server’s reply could not be read."_s);
        QCOMPARE(fetch(u"http://"_s), u"failed: The server’s reply could not be read."_s);
    }

    void aRefusedConnectionSaysSo()
    {
        m_service.reset();
        QCOMPARE(fetch(u"http://127.0.0.1:9/"_s), u"failed: The server refused the connection."_s);
    }

    void anUnknownHostSaysSo()
    {
        QCOMPARE(fetch(u"http://nowhere.invalid/"_s), u"failed: The server could not be found."_s);
    }

    void anotherHostsCertificateGetsNoRequest()
    {
        m_service = std::make_unique<LoopbackService>(LoopbackService::Transport::Tls);
        QCOMPARE(fetch(address().replace(u"localhost"_s, u"127.0.0.1"_s)),
            u"failed: A secure connection to the server could not be made."_s);
        QVERIFY(m_service->requests().isEmpty());
    }

    void redirectsAreFollowed()
    {
        m_service->answer([](const LoopbackService::Request &request) {
            return request.target == "/end" ? Reply::whole(body) : Reply::whole("", 302, "Location: /end\r\n");
        });
        QCOMPARE(fetch(address()), QString::fromUtf8(body));
    }

    void theBodyCountsWhereARedirectionNamesNoAddress_data()
    {
        QTest::addColumn<int>("status");
        for (const int status : {300, 301, 302, 303, 305, 307, 308})
            QTest::addRow("%d", status) << status;
    }

    void theBodyCountsWhereARedirectionNamesNoAddress()
    {
        QFETCH(const int, status);
        m_service->answerAll(Reply::whole(body, status));
        QCOMPARE(fetch(address()), QString::fromUtf8(body));
        QCOMPARE(m_service->requests().size(), 1);
    }

    void aRedirectToNoAddressIsNotFollowed()
    {
        for (const char *where : {"http://[", "ftp://127.0.0.1/", "file:///etc/passwd", "mailto:x@y"}) {
            m_service->answerAll(Reply::whole(body, 302, "Location: " + QByteArray(where) + "\r\n"));
            QCOMPARE(
                fetch(address()), u"failed: The server redirected the request in a way that cannot be followed."_s);
        }
    }

    void endlessRedirectsEnd()
    {
        m_service->answerAll(Reply::whole("", 302, "Location: /again\r\n"));
        QCOMPARE(fetch(address()), u"failed: The server redirected the request in a way that cannot be followed."_s);
        QCOMPARE(m_service->requests().size(), 1 + 50);
    }

    void aBodyAtTheBoundIsRead()
    {
        m_service->answerAll(Reply::whole(QByteArray(HttpSession::maximumBodySize, ' ')));
        QCOMPARE(fetch(address()).size(), HttpSession::maximumBodySize);
    }

    void aBodyBeyondTheBoundIsAFailedTransfer()
    {
        m_service->answerAll(Reply::whole(QByteArray(HttpSession::maximumBodySize + 1, ' ')));
        QCOMPARE(fetch(address()), u"failed: The server’s reply is too large."_s);
    }

    void descriptionsNeverHoldTheAddress()
    {
        const QString secret = u"/?access_token=SECRET"_s;
        TestDeployment::setTransferTimeout(50ms);
        for (const Reply &reply : {Reply::silence(), Reply::reset(), Reply::raw("garbage"),
                 Reply::raw("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n{}"),
                 Reply::whole(brokenGzip(), 200, "Content-Encoding: gzip\r\n"),
                 Reply::whole("", 302, "Location: /?access_token=SECRET\r\n")}) {
            m_service->answerAll(reply);
            const QString description = fetch(m_service->origin() + secret);
            QVERIFY2(
                !description.contains(u"SECRET"_s) && !description.contains(u"127.0.0.1"_s), qPrintable(description));
        }
    }

    void oneConnectionServesManyRequests()
    {
        m_service->answerAll(Reply::whole(body));
        for (int i = 0; i < 5; ++i)
            fetch(address());
        QCOMPARE(m_service->connections(), 1);
    }

    void aRequestGoesOutTwiceAtMostWhereAnOldConnectionTurnsOutClosed_data()
    {
        QTest::addColumn<Reply>("second");
        QTest::addColumn<QString>("outcome");
        QTest::newRow("then served") << Reply::whole(body) << QString::fromUtf8(body);
        QTest::newRow("then closed again") << Reply::raw({}) << u"failed: The connection was lost."_s;
    }

    void aRequestGoesOutTwiceAtMostWhereAnOldConnectionTurnsOutClosed()
    {
        QFETCH(const Reply, second);
        QFETCH(const QString, outcome);
        QCOMPARE(fetch(address()), u"{}"_s);
        m_service->answer([&](const LoopbackService::Request &) {
            return m_service->requestsWith("/next") == 1 ? Reply::raw({}) : second;
        });
        QCOMPARE(fetch(m_service->origin() + u"/next"_s), outcome);
        QCOMPARE(m_service->requestsWith("/next"), 2);
        QCOMPARE(m_service->connections(), 2);
    }

    void aRequestOnANewConnectionGoesOutOnce()
    {
        m_service->answerAll(Reply::raw({}));
        QCOMPARE(fetch(address()), u"failed: The connection was lost."_s);
        QCOMPARE(m_service->requests().size(), 1);
    }

    void forgottenConnectionsAreNotUsedAgain()
    {
        m_service->answerAll(Reply::whole(body));
        fetch(address());
        HttpSession::shared().forgetConnections();
        QCOMPARE(fetch(address()), QString::fromUtf8(body));
        QCOMPARE(m_service->connections(), 2);
    }

    void aFailureForgetsTheConnections()
    {
        m_service->answer([](const LoopbackService::Request &request) {
            return request.target == "/fail" ? Reply::reset() : Reply::whole(body);
        });
        fetch(address());
        QCOMPARE(m_service->connections(), 1);
        fetch(m_service->origin() + u"/fail"_s);
        fetch(address());
        const int connections = m_service->connections();
        QVERIFY(connections > 1);
        fetch(address());
        QCOMPARE(m_service->connections(), connections);
    }

    void aFailureDoesNotHarmOtherTransfers()
    {
        TestDeployment::setTransferTimeout(300ms);
        m_service->answer([](const LoopbackService::Request &request) {
            return request.target == "/fail" ? Reply::reset() : Reply::silence();
        });
        auto slow = HttpSession::shared().data(QUrl(m_service->origin() + u"/slow"_s));
        QTRY_COMPARE(m_service->requests().size(), 1);
        fetch(m_service->origin() + u"/fail"_s);
        QCoreApplication::processEvents();
        QVERIFY(!slow.isReady());
        QCOMPARE(outcome(QCoro::waitFor(slow)), u"failed: The request timed out."_s);
    }

    void cancellingEndsEveryTransferAtOnce()
    {
        m_service->answerAll(Reply::silence());
        auto task = HttpSession::shared().data(QUrl(address()));
        QTRY_COMPARE(m_service->requests().size(), 1);
        HttpSession::shared().cancelAll();
        QVERIFY(task.isReady());
        const TransferError error = QCoro::waitFor(task).error();
        QVERIFY(error.cancelled);
        QCOMPARE(error.description, u"Cancelled."_s);
    }

    void cancellingEndsWhatIsAskedForInConsequence()
    {
        m_service->answerAll(Reply::silence());
        const auto twice = [](QUrl url) -> QCoro::Task<bool> {
            const auto first = co_await HttpSession::shared().data(url);
            const auto second = co_await HttpSession::shared().data(url);
            co_return first.error().cancelled &&second.error().cancelled;
        };
        auto task = twice(QUrl(address()));
        QTRY_COMPARE(m_service->requests().size(), 1);
        HttpSession::shared().cancelAll();
        QVERIFY(task.isReady());
        QVERIFY(QCoro::waitFor(task));
    }

    void aTransferThatHasJustEndedIsCancelledToo()
    {
        m_service->answerAll(Reply::whole(body));
        auto task = HttpSession::shared().data(QUrl(address()));
        while (!task.isReady()) {
            HttpSession::shared().cancelAll();
            QCoreApplication::processEvents();
        }
        QVERIFY(QCoro::waitFor(task).error().cancelled);
    }

private:
    QString address() const { return m_service->origin() + u'/'; }

    std::unique_ptr<LoopbackService> m_service;
};

QTEST_GUILESS_MAIN(HttpSessionTest)
#include "HttpSessionTest.moc"
