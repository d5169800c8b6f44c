// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Http/HttpSession.h"
#include "LoopbackService.h"

#include <QCoreApplication>
#include <QCoroTask>
#include <QPointer>
#include <QTest>

class HttpSessionLifetimeTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theSessionEndsWithTheApplication()
    {
        int argc = 0;
        QPointer<HttpSession> session;
        {
            const QCoreApplication application(argc, nullptr);
            session = &HttpSession::shared();
            const LoopbackService service(LoopbackService::Transport::Tls);
            QVERIFY(QCoro::waitFor(session->data(QUrl(service.origin()))).has_value());
            QVERIFY(session);
        }
        QVERIFY(!session);
    }
};

QTEST_APPLESS_MAIN(HttpSessionLifetimeTest)
#include "HttpSessionLifetimeTest.moc"
