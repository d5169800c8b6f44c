// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "API/MetaAPI.h"
#include "Json.h"
#include "LoopbackService.h"
#include "TestDeployment.h"

#include <QCoroTask>
#include <QTest>

#include <algorithm>
#include <clocale>
#include <tuple>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using Reply = LoopbackService::Reply;

namespace {

/// The names of a request's headers, in the alphabet's order.
QByteArrayList headersOf(const QByteArray &head)
{
    QByteArrayList names;
    const QByteArrayList lines = head.trimmed().split('\n').mid(1);
    for (const QByteArray &line : lines)
        names << line.first(line.indexOf(':'));
    std::ranges::sort(names);
    return names;
}

} // namespace

class MetaAPITest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_service = std::make_unique<LoopbackService>(); }
    void cleanup()
    {
        m_service.reset();
        TestDeployment::setTransferTimeout(30s);
        std::setlocale(LC_ALL, "C");
    }

    void theRequestForTodayIsExact()
    {
        std::ignore = fetchToday();
        QCOMPARE(m_service->requests().constFirst().target,
            "/v21.0/act_42/insights?fields=impressions,spend,inline_link_clicks,cost_per_inline_link_click"
            "&date_preset=today&access_token=EAAB123"_ba);
    }

    void theRequestForSevenDaysIsExact()
    {
        std::ignore = fetchWeek();
        QCOMPARE(m_service->requests().constFirst().target,
            "/v21.0/act_42/insights?fields=spend,impressions,frequency,reach,cost_per_inline_link_click,"
            "inline_link_click_ctr,actions&date_preset=last_7d&access_token=EAAB123"_ba);
    }

    void theRequestIsAPlainGet()
    {
        std::ignore = fetchToday();
        const QByteArray head = m_service->requests().constFirst().head;
        QVERIFY(head.startsWith("GET "));
        QCOMPARE(headersOf(head), QByteArrayList({"Accept", "Accept-Encoding", "Host", "User-Agent"}));
    }

    void theAccountIdIsSentAsItIs()
    {
        std::ignore = fetchToday(u"T"_s, u"42"_s);
        QVERIFY(m_service->requests().constFirst().target.startsWith("/v21.0/42/insights?"));
    }

    void theTokenIsSentAsItIs()
    {
        std::ignore = fetchToday(u"a%20b&c=d"_s);
        QVERIFY(m_service->requests().constFirst().target.endsWith("&access_token=a%20b&c=d"));
    }

    void anAddressThatIsNoUrlMakesNoRequest_data()
    {
        QTest::addColumn<QString>("token");
        QTest::newRow("a blank") << u"a b"_s;
        QTest::newRow("a blank at the end") << u"ab "_s;
        QTest::newRow("a line break") << u"ab\n"_s;
        QTest::newRow("a broken escape") << u"a%zz"_s;
        QTest::newRow("a quotation mark") << u"\"ab\""_s;
    }

    void anAddressThatIsNoUrlMakesNoRequest()
    {
        QFETCH(const QString, token);
        QCOMPARE(errorOfToday(token), u"Invalid API URL"_s);
        QCOMPARE(m_service->requests().size(), 0);
    }

    void todaysFiguresComeFromTheFirstRow()
    {
        reply(json("{'data': [{'impressions': '361324', 'spend': '5339.5', 'inline_link_clicks': '9',"
                   "'cost_per_inline_link_click': '1.594444', 'date_start': '2026-03-14', 'account_id': '42'},"
                   "{'impressions': '1'}], 'paging': {'cursors': {'before': 'MAZDZD', 'after': 'MAZDZD'}}}"));
        const auto today = fetchToday();
        QVERIFY(today);
        const TodayStats expected{.impressions = 361324, .spend = 5339.5, .linkClicks = 9, .cpc = 1.594444};
        QVERIFY(*today == expected);
    }

    void sevenDaysFiguresComeFromTheFirstRow()
    {
        reply(json("{'data': [{'spend': '14.35', 'impressions': '185', 'frequency': '1.25', 'reach': '148',"
                   "'cost_per_inline_link_click': '1.594444', 'inline_link_click_ctr': '4.864865', 'actions': ["
                   "{'action_type': 'purchase', 'value': '3', '1d_click': '3'}, {'action_type': 'lead', 'value': '2'},"
                   "{'action_type': 'complete_registration'}, {'action_type': 'page_engagement', 'value': '50'}]}]}"));
        const auto week = fetchWeek();
        QVERIFY(week);
        const SevenDayStats expected{.spend = 14.35,
            .impressions = 185,
            .frequency = 1.25,
            .reach = 148,
            .cpc = 1.594444,
            .ctr = 4.864865,
            .conversions = 5};
        QVERIFY(*week == expected);
    }

    void noRowsAreFiguresOfZero_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::newRow("empty object") << "{}"_ba;
        QTest::newRow("empty list") << json("{'data': []}");
        QTest::newRow("null") << json("{'data': null}");
        QTest::newRow("empty row") << json("{'data': [{}]}");
    }

    void noRowsAreFiguresOfZero()
    {
        QFETCH(const QByteArray, body);
        reply(body);
        // Spelled out: what a default is must not decide what it is compared with.
        const TodayStats noImpressions{.impressions = 0, .spend = 0.0, .linkClicks = 0, .cpc = 0.0};
        const SevenDayStats emptyWeek{
            .spend = 0.0, .impressions = 0, .frequency = 0.0, .reach = 0, .cpc = 0.0, .ctr = 0.0, .conversions = 0};
        const auto today = fetchToday();
        QVERIFY(today && *today == noImpressions);
        const auto week = fetchWeek();
        QVERIFY(week && *week == emptyWeek);
    }

    void theStatusNeverDecides_data()
    {
        QTest::addColumn<int>("status");
        for (const int status : {200, 400, 401, 403, 404, 429, 500, 503})
            QTest::addRow("%d", status) << status;
    }

    void theStatusNeverDecides()
    {
        QFETCH(const int, status);
        reply(json("{'error': {'message': '(#17) User request limit reached', 'type': 'OAuthException', 'code': 17}}"),
            status);
        QCOMPARE(errorOfToday(), u"(#17) User request limit reached"_s);
        reply(json("{'data': [{'impressions': '7'}]}"), status);
        QCOMPARE(fetchToday()->impressions, 7);
    }

    void anErrorWinsOverData()
    {
        reply(json("{'data': [{'impressions': '1'}], 'error': {'message': 'no'}}"));
        QCOMPARE(errorOfToday(), u"no"_s);
    }

    void anErrorExcusesNoDataOfAnotherKind_data()
    {
        QTest::addColumn<QByteArray>("data");
        QTest::newRow("a number") << "5"_ba;
        QTest::newRow("an object") << "{}"_ba;
        QTest::newRow("a row that is none") << "[7]"_ba;
        QTest::newRow("a number in a row") << json("[{'impressions': 1}]");
    }

    void anErrorExcusesNoDataOfAnotherKind()
    {
        QFETCH(const QByteArray, data);
        reply(json("{'error': {'message': 'no'}, 'data': ") + data + '}');
        QCOMPARE(errorOfToday(), u"Network error: The data couldn’t be read because it isn’t in the correct format."_s);
    }

    void anErrorWithoutMessageIsUnknown()
    {
        reply(json("{'error': {}}"));
        QCOMPARE(errorOfToday(), u"Unknown API error"_s);
        reply(json("{'error': {'message': null, 'code': 1}}"));
        QCOMPARE(errorOfToday(), u"Unknown API error"_s);
    }

    void anEmptyMessageIsShownAsItStands()
    {
        reply(json("{'error': {'message': ''}}"));
        QCOMPARE(errorOfToday(), u""_s);
    }

    void aMessageThatQuotesTheTokenIsShownWithoutIt()
    {
        const QString token = u"EAAB0123456789abcdef0123456789"_s;
        reply(json("{'error': {'message': 'Malformed access token EAAB0123456789abcdef0123456789!'}}"));
        QCOMPARE(errorOfToday(token), u"Malformed access token …!"_s);
        QCOMPARE(QCoro::waitFor(m_api.fetch7DayInsights(token, u"act_42"_s)).error().errorDescription(),
            u"Malformed access token …!"_s);
    }

    void aWordThatStandsInTheTokensPlaceIsNoQuote()
    {
        reply(json("{'error': {'message': 'Invalid token'}}"));
        QCOMPARE(errorOfToday(u"token"_s), u"Invalid token"_s);
    }

    void aTokenHasTwentyCharactersAtLeast()
    {
        reply(json("{'error': {'message': 'No 01234567890123456789'}}"));
        QCOMPARE(errorOfToday(u"01234567890123456789"_s), u"No …"_s);
        QCOMPARE(errorOfToday(u"0123456789012345678"_s), u"No 01234567890123456789"_s);
    }

    void whatDoesNotDecodeIsANetworkError_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<int>("status");
        QTest::newRow("HTML from a failing server") << "<html><body>Sorry</body></html>"_ba << 500;
        QTest::newRow("HTML from a captive portal") << "<!DOCTYPE html>"_ba << 200;
        QTest::newRow("empty") << ""_ba << 200;
        QTest::newRow("a list") << "[]"_ba << 200;
        QTest::newRow("a number for a text") << json("{'data': [{'impressions': 1234}]}") << 200;
        QTest::newRow("a text for the code") << json("{'error': {'message': 'no', 'code': '17'}}") << 400;
    }

    void whatDoesNotDecodeIsANetworkError()
    {
        QFETCH(const QByteArray, body);
        QFETCH(const int, status);
        reply(body, status);
        QCOMPARE(errorOfToday(), u"Network error: The data couldn’t be read because it isn’t in the correct format."_s);
    }

    void aBodyCutShortIsNeverReadAsFigures()
    {
        m_service->answerAll(Reply::raw("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n{}"));
        QCOMPARE(errorOfToday(), u"Network error: The connection was lost."_s);
    }

    void silenceIsANetworkError()
    {
        TestDeployment::setTransferTimeout(50ms);
        m_service->answerAll(Reply::silence());
        QCOMPARE(errorOfToday(), u"Network error: The request timed out."_s);
    }

    void aGermanLocaleChangesNothing()
    {
        if (!std::setlocale(LC_ALL, "de_DE.UTF-8"))
            QFAIL("the locale de_DE.UTF-8 is not installed");
        reply(json("{'data': [{'impressions': '1234567', 'spend': '12.5'}]}"));
        const auto today = fetchToday();
        QCOMPARE(today->impressions, 1234567);
        QCOMPARE(today->spend, 12.5);
    }

    void callsMayRunSideBySide()
    {
        m_service->answerInsights(json("{'data': [{'impressions': '1'}]}"), json("{'data': [{'impressions': '7'}]}"));
        auto today = m_api.fetchTodayInsights(u"T"_s, u"act_42"_s);
        auto week = m_api.fetch7DayInsights(u"T"_s, u"act_42"_s);
        QCOMPARE(QCoro::waitFor(week)->impressions, 7);
        QCOMPARE(QCoro::waitFor(today)->impressions, 1);
    }

private:
    void reply(const QByteArray &body, int status = 200) { m_service->answerAll(Reply::whole(body, status)); }

    tl::expected<TodayStats, MetaAPIError> fetchToday(
        const QString &token = u"EAAB123"_s, const QString &accountId = u"act_42"_s)
    {
        return QCoro::waitFor(m_api.fetchTodayInsights(token, accountId));
    }

    tl::expected<SevenDayStats, MetaAPIError> fetchWeek()
    {
        return QCoro::waitFor(m_api.fetch7DayInsights(u"EAAB123"_s, u"act_42"_s));
    }

    QString errorOfToday(const QString &token = u"EAAB123"_s)
    {
        const auto today = fetchToday(token);
        return today ? u"success"_s : today.error().errorDescription();
    }

    std::unique_ptr<LoopbackService> m_service;
    MetaAPI m_api;
};

QTEST_GUILESS_MAIN(MetaAPITest)
#include "MetaAPITest.moc"
