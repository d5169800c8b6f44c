// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Http/HttpSession.h"
#include "LoopbackService.h"
#include "TestDeployment.h"

#include <QCoroTask>
#include <QRandomGenerator>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using Reply = LoopbackService::Reply;

namespace {

/// The body, or "failed: " and the description.
QString outcome(const tl::expected<QByteArray, TransferError> &result)
{
    return result ? QString::fromUtf8(*result) : u"failed: "_s + result.error().description;
}

tl::expected<QByteArray, TransferError> transfer(const QString &address)
{
    return QCoro::waitFor(HttpSession::shared().data(QUrl(address)));
}

constexpr int mebibyte = 1024 * 1024;

QByteArray incompressible(int size)
{
    QByteArray bytes(size, Qt::Uninitialized);
    std::ranges::generate(
        bytes, [generator = QRandomGenerator(1)]() mutable { return static_cast<char>(generator()); });
    return bytes;
}

/// The bytes after the status line, then the other ones as fast and as long as the client takes them.
Reply endless(const QByteArray &head, const QByteArray &again)
{
    return {.bytes = "HTTP/1.1 200 OK\r\n" + head, .then = Reply::Then::Repeat, .again = again};
}

/// Up to where a gzip stream has its first block.
const QByteArray compressed = "Content-Encoding: gzip\r\n\r\n" + QByteArray::fromHex("1f8b0800000000000003");

/// Part of one, 64 KiB of blanks in 84 bytes.
const QByteArray someBlanks =
    QByteArray::fromHex("ecc18100000000802095fd2917a90a") + QByteArray(63, '\0') + QByteArray::fromHex("6a000000ffff");

} // namespace

/// What a service may take of time and memory.
class TransferLimitsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_service = std::make_unique<LoopbackService>(LoopbackService::Transport::Tls); }
    void cleanup()
    {
        m_service.reset();
        TestDeployment::setTransferTimeout(30s);
    }

    void aBodyMayComeSlowlyForLongerThanTheTimeOut_data()
    {
        QTest::addColumn<QByteArray>("head");
        QTest::addColumn<QByteArray>("piece");
        QTest::addColumn<QByteArray>("last");
        QTest::newRow("with a length") << "Content-Length: 30\r\n\r\n"_ba
                                       << "x"_ba
                                       << ""_ba;
        QTest::newRow("in chunks") << "Transfer-Encoding: chunked\r\n\r\n"_ba
                                   << "1\r\nx\r\n"_ba
                                   << "0\r\n\r\n"_ba;
    }

    void aBodyMayComeSlowlyForLongerThanTheTimeOut()
    {
        QFETCH(const QByteArray, head);
        QFETCH(const QByteArray, piece);
        QFETCH(const QByteArray, last);
        TestDeployment::setTransferTimeout(2s);
        m_service->answerAll({.bytes = "HTTP/1.1 200 OK\r\n" + head,
            .then = Reply::Then::Repeat,
            .again = piece,
            .pause = 100ms,
            .times = 30,
            .last = last});
        QCOMPARE(outcome(transfer(m_service->origin())), QString(30, u'x'));
    }

    void anEndlessBodyEndsAtTheBound_data()
    {
        QTest::addColumn<QByteArray>("head");
        QTest::addColumn<QByteArray>("piece");
        const QByteArray blanks(0xffff, ' ');
        QTest::newRow("until closed") << "\r\n"_ba << blanks;
        QTest::newRow("with a length") << "Content-Length: 99999999999\r\n\r\n"_ba << blanks;
        QTest::newRow("in chunks") << "Transfer-Encoding: chunked\r\n\r\n"_ba
                                   << "ffff\r\n" + blanks + "\r\n";
        QTest::newRow("compressed") << compressed << QByteArray::fromHex("00ffff0000") + blanks;
    }

    void anEndlessBodyEndsAtTheBound()
    {
        QFETCH(const QByteArray, head);
        QFETCH(const QByteArray, piece);
        m_service->answerAll(endless(head, piece));
        QCOMPARE(outcome(transfer(m_service->origin())), u"failed: The server’s reply is too large."_s);
    }

    void aBodyThatInflatesWithoutEndEndsAtTheBound()
    {
        m_service->answerAll(endless(compressed, someBlanks.repeated(50)));
        QCOMPARE(outcome(transfer(m_service->origin())), u"failed: The server’s reply is too large."_s);
    }

    /// Empty blocks, which come without end and bring nothing.
    void aBodyThatInflatesToNothingTimesOut()
    {
        TestDeployment::setTransferTimeout(300ms);
        m_service->answerAll(endless(compressed, QByteArray::fromHex("000000ffff").repeated(200)));
        QCOMPARE(outcome(transfer(m_service->origin())), u"failed: The request timed out."_s);
    }

    void aBodyIsMeasuredInflated_data()
    {
        QTest::addColumn<int>("blanks");
        QTest::addColumn<int>("noise");
        QTest::addColumn<QString>("failure");
        const int bound = static_cast<int>(HttpSession::maximumBodySize);
        QTest::newRow("at the bound") << bound - mebibyte << mebibyte << QString();
        QTest::newRow("beyond it") << bound << mebibyte << u"failed: The server’s reply is too large."_s;
        QTest::newRow("far beyond it") << 10 * bound << 0 << u"failed: The server’s reply is too large."_s;
    }

    void aBodyIsMeasuredInflated()
    {
        QFETCH(const int, blanks);
        QFETCH(const int, noise);
        QFETCH(const QString, failure);
        const QByteArray sent = qCompress(incompressible(noise) + QByteArray(blanks, ' '), 1).sliced(4);
        m_service->answerAll(Reply::whole(sent, 200, "Content-Encoding: deflate\r\n"));
        const auto body = transfer(m_service->origin());
        if (failure.isEmpty())
            QCOMPARE(body.value_or("").size(), blanks + noise);
        else
            QCOMPARE(outcome(body), failure);
    }

    void headersWithoutEndEndAtTheirBound()
    {
        m_service->answerAll(endless("", "X-Padding: " + QByteArray(1000, 'x') + "\r\n"));
        QCOMPARE(outcome(transfer(m_service->origin())), u"failed: The server’s reply is too large."_s);
    }

private:
    std::unique_ptr<LoopbackService> m_service;
};

QTEST_GUILESS_MAIN(TransferLimitsTest)
#include "TransferLimitsTest.moc"
