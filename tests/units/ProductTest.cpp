// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Foundation/Clock.h"
#include "Foundation/Deployment.h"

#include <QDateTime>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

/// What users' program is wired to. Every other test links a wiring of its own.
class ProductTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void itPollsEveryTenMinutes() { QCOMPARE(Deployment::pollInterval(), std::chrono::milliseconds(10min)); }

    void aTransferTimesOutAfterAMinute() { QCOMPARE(Deployment::transferTimeout(), std::chrono::milliseconds(60s)); }

    void requestsGoToTheGraphApi() { QCOMPARE(Deployment::graphBaseUrl(), u"https://graph.facebook.com/"_s); }

    void theUpdateFeedIsOnTheProductsOwnSite()
    {
        QCOMPARE(Deployment::updateFeedUrl(), QStringLiteral(VANTELO_WEBSITE "/version.json"));
    }

    void theSystemsCertificateAuthoritiesAreTrusted() { QCOMPARE(Deployment::trustedAuthorities(), QString()); }

    void preferencesAreInTheProductsDomain() { QCOMPARE(Deployment::domain(), u"Vantelo"_s); }

    void theClockIsTheSystems()
    {
        const auto before = static_cast<double>(QDateTime::currentMSecsSinceEpoch()) / 1000.0;
        const double now = secondsSince1970();
        const auto after = static_cast<double>(QDateTime::currentMSecsSinceEpoch()) / 1000.0;
        QVERIFY2(before - 0.01 <= now && now <= after + 0.01, qPrintable(QString::number(now, 'f', 3)));
    }
};

QTEST_GUILESS_MAIN(ProductTest)

#include "ProductTest.moc"
