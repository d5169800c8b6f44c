// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Foundation/Decoding.h"

#include <QTest>
#include <QThread>

namespace {

QThread *threadOf(const QByteArray &) { return QThread::currentThread(); }

QThread *decodingThreadOf(qsizetype size) { return QCoro::waitFor(decoded(QByteArray(size, ' '), &threadOf)); }

} // namespace

class DecodingTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aSmallBodyIsDecodedInPassing()
    {
        QCOMPARE(decodingThreadOf(0), QThread::currentThread());
        QCOMPARE(decodingThreadOf(smallBody), QThread::currentThread());
    }

    void aLargeBodyIsDecodedOnAnotherThread() { QVERIFY(decodingThreadOf(smallBody + 1) != QThread::currentThread()); }
};

QTEST_GUILESS_MAIN(DecodingTest)
#include "DecodingTest.moc"
