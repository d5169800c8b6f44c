// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "API/MetaAPI.h"
#include "AccountServer.h"
#include "Foundation/JsonReader.h"
#include "Http/HttpSession.h"
#include "TestClock.h"
#include "TestDeployment.h"
#include "Update/UpdateManager.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString token = QStringLiteral(DEMO_ACCESS_TOKEN);
const QString account = QStringLiteral(DEMO_ACCOUNT_ID);

/// Delivery stopped late in the evening and comes back at 00:06 with this minute.
constexpr int afterMidnight = 3 * AccountStory::period + AccountStory::startOfRecovery;

constexpr double beginning = 1'700'000'000.0;

void setMinutes(double minutes) { TestClock::set(beginning + minutes * 60.0); }

template <class Stats>
QString errorOf(const tl::expected<Stats, MetaAPIError> &fetched)
{
    return fetched ? QString() : fetched.error().errorDescription();
}

struct Page {
    int status = 0;
    QByteArray challenge;
    QByteArray body;
};

/// The bytes as they are served, past the product's own client.
Page page(const QString &address)
{
    QNetworkAccessManager manager;
    const std::unique_ptr<QNetworkReply> reply(manager.get(QNetworkRequest(QUrl(address))));
    QSignalSpy finished(reply.get(), &QNetworkReply::finished);
    if (!reply->isFinished())
        finished.wait();
    return {reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt(), reply->rawHeader("WWW-Authenticate"),
        reply->readAll()};
}

} // namespace

/// The product's own client against the demo account.
class DemoAccountTest : public QObject {
    Q_OBJECT

    std::unique_ptr<AccountServer> m_server;
    MetaAPI m_api;

    auto today(const QString &with = token, const QString &of = account)
    {
        return QCoro::waitFor(m_api.fetchTodayInsights(with, of));
    }

    QString insights(const QString &query, const QString &with = token) const
    {
        return m_server->origin() + u"/v21.0/"_s + account + u"/insights?access_token="_s + with + query;
    }

    RemoteUpdate feed() const
    {
        const auto body = QCoro::waitFor(HttpSession::shared().data(QUrl(m_server->origin() + u"/version.json"_s)));
        return decodeJson<RemoteUpdate>(body.value()).value();
    }

private Q_SLOTS:
    void init()
    {
        setMinutes(0.0);
        m_server = std::make_unique<AccountServer>(AccountStory(QDate(2026, 3, 14)));
        QVERIFY(m_server->listen(0));
        TestDeployment::setOrigin(m_server->origin());
    }

    void todaysFiguresDecode()
    {
        const auto stats = today();
        QVERIFY(stats);
        const Delivery expected = AccountStory(QDate(2026, 3, 14)).today(0.0);
        QCOMPARE(stats->impressions, expected.impressions);
        QCOMPARE(stats->linkClicks, expected.linkClicks);
        QCOMPARE(stats->spend, expected.spend);
        QVERIFY(stats->cpc > 0.5 && stats->cpc < 1.0);
    }

    void theLastSevenDaysDecode()
    {
        const auto stats = QCoro::waitFor(m_api.fetch7DayInsights(token, account));
        QVERIFY(stats);
        const Delivery expected = AccountStory(QDate(2026, 3, 14)).lastSevenDays(0.0);
        QCOMPARE(stats->impressions, expected.impressions);
        QCOMPARE(stats->reach, expected.reach);
        QCOMPARE(stats->conversions, expected.leads + expected.purchases);
        QVERIFY(stats->frequency > 1.0 && stats->ctr > 1.0 && stats->cpc > 0.5);
    }

    void theStoryBeginsWithTheFirstFigures()
    {
        setMinutes(100.0);
        const auto first = today();
        setMinutes(100.0 + AccountStory::startOfStop);
        QVERIFY(first->impressions < today()->impressions);
    }

    void anExpiredTokenIsToldInTheServicesWords()
    {
        QVERIFY(today());
        setMinutes(AccountStory::startOfExpiry + 1);
        QCOMPARE(errorOf(today()),
            u"Error validating access token: Session has expired on Saturday, 14-Mar-26 11:26:00 GMT. "
            "The current time is Saturday, 14-Mar-26 11:27:00 GMT."_s);
        setMinutes(AccountStory::startOfRecovery);
        QVERIFY(today());
    }

    void errorsAreToldInTheServicesWords_data()
    {
        QTest::addColumn<QString>("with");
        QTest::addColumn<QString>("of");
        QTest::addColumn<QString>("message");
        QTest::newRow("another token") << u"another"_s << account
                                       << u"Invalid OAuth access token - Cannot parse access token"_s;
        QTest::newRow("no token") << QString() << account << u"An access token is required to request this resource."_s;
        QTest::newRow("another account")
            << token << u"act_7"_s
            << u"Unsupported get request. Object with ID 'act_7' does not exist, cannot be loaded due to missing "
               "permissions, or does not support this operation"_s;
        QTest::newRow("no such path") << token << u"act_7/campaigns"_s
                                      << u"Unknown path components: /v21.0/act_7/campaigns/insights"_s;
    }

    void errorsAreToldInTheServicesWords()
    {
        QFETCH(const QString, with);
        QFETCH(const QString, of);
        QTEST(errorOf(today(with, of)), "message");
    }

    void aRefusedCallDoesNotBeginTheStory()
    {
        QVERIFY(!today(u"another"_s));
        setMinutes(AccountStory::startOfExpiry);
        QVERIFY(today());
    }

    void tooManyCallsInAnHourAreRefused()
    {
        for (int call = 0; call < GraphService::callsPerHour; ++call)
            QVERIFY(today());
        QCOMPARE(errorOf(today()), u"(#17) User request limit reached"_s);
        setMinutes(AccountStory::startOfStop);
        QCOMPARE(errorOf(today()), u"(#17) User request limit reached"_s);
        setMinutes(AccountStory::startOfRecovery);
        QVERIFY(today());
    }

    void aRowHoldsWhatWasAskedForAndItsDates()
    {
        const Page served = page(insights(u"&date_preset=last_7d&fields=reach,frequency"_s));
        QCOMPARE(served.status, 200);
        const QJsonObject row = QJsonDocument::fromJson(served.body).object()[u"data"_s].toArray()[0].toObject();
        QCOMPARE(row.keys(), QStringList({u"date_start"_s, u"date_stop"_s, u"frequency"_s, u"reach"_s}));
        QVERIFY(row[u"reach"_s].isString());
        QCOMPARE(row[u"date_start"_s].toString(), u"2026-03-07"_s);
        QCOMPARE(row[u"date_stop"_s].toString(), u"2026-03-13"_s);
    }

    void anAccountWithoutDeliveryHasNoRow()
    {
        QVERIFY(today());
        setMinutes(afterMidnight);
        QCOMPARE(page(insights(u"&date_preset=today&fields=impressions"_s)).body, QByteArray("{\"data\":[]}"));
        QCOMPARE(today()->impressions, 0);
    }

    void aMetricWithoutAValueIsAbsent()
    {
        QVERIFY(today());
        setMinutes(afterMidnight + 1); // a few impressions, no click yet
        const QByteArray body = page(insights(u"&date_preset=today&fields=impressions,inline_link_clicks"_s)).body;
        QVERIFY(body.contains("\"impressions\":\""));
        QVERIFY(!body.contains("inline_link_clicks"));
        QCOMPARE(today()->linkClicks, 0);
    }

    void errorsHaveTheServicesStatusCodeAndChallenge_data()
    {
        QTest::addColumn<QString>("with");
        QTest::addColumn<QString>("query");
        QTest::addColumn<int>("code");
        QTest::addColumn<QByteArray>("challenge");
        QTest::newRow("token") << u"another"_s << QString() << 190
                               << "\"invalid_token\" \"Invalid OAuth access token - Cannot parse access token\""_ba;
        QTest::newRow("field") << token << u"&date_preset=today&fields=luck"_s << 100
                               << "\"invalid_request\" \"(#100) luck is not valid for fields param.\""_ba;
        QTest::newRow("preset")
            << token << u"&date_preset=ever"_s << 100
            << "\"invalid_request\" \"(#100) date_preset must be one of the following values: today, last_7d\""_ba;
    }

    void errorsHaveTheServicesStatusCodeAndChallenge()
    {
        QFETCH(const QString, with);
        QFETCH(const QString, query);
        QFETCH(const QByteArray, challenge);
        const Page served = page(insights(query, with));
        QCOMPARE(served.status, 400);
        QTEST(QJsonDocument::fromJson(served.body).object()[u"error"_s].toObject()[u"code"_s].toInt(), "code");
        QCOMPARE(served.challenge, "OAuth \"Facebook Platform\" " + challenge);
    }

    void theFeedOffersAReleaseInTheCourseOfTheStory()
    {
        const RemoteUpdate atFirst = feed();
        QVERIFY(today());
        setMinutes(60);
        QVERIFY(UpdateManager::isVersionNewer(feed().version, atFirst.version));
        QVERIFY(feed().release_notes);
        QCOMPARE(page(feed().download_url).status, 200);
    }

    void aTakenPortIsAnError()
    {
        AccountServer second(AccountStory(QDate(2026, 3, 14)));
        QVERIFY(!second.listen(m_server->port()));
        QVERIFY(!second.errorString().isEmpty());
    }
};

QTEST_GUILESS_MAIN(DemoAccountTest)
#include "DemoAccountTest.moc"
