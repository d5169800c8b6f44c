// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "API/InsightsResponse.h"
#include "Foundation/JsonReader.h"
#include "Json.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

auto decode(const QByteArray &body) { return decodeJson<InsightsResponse>(body); }

} // namespace

class InsightsResponseTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void anEmptyObjectHasNeitherDataNorError()
    {
        const auto response = decode("{}");
        QVERIFY(response && !response->data && !response->error);
    }

    void anEmptyListIsPresentDataAndNullIsAbsent()
    {
        QVERIFY(decode(json("{'data': []}"))->data->empty());
        QVERIFY(!decode(json("{'data': null}"))->data);
    }

    void anErrorWithoutMembersIsPresent()
    {
        const auto response = decode(json("{'error': {}}"));
        QVERIFY(response && response->error);
        QVERIFY(!response->error->message && !response->error->type && !response->error->code);
    }

    void anErrorKeepsItsMessageTypeAndCode()
    {
        const auto response =
            decode(json("{'error': {'message': '(#200) Needs ads_read & more', 'type': 'OAuthException', "
                        "'code': 200, 'error_subcode': 33, 'is_transient': false, 'fbtrace_id': 'Abc'}}"));
        QCOMPARE(*response->error->message, u"(#200) Needs ads_read & more"_s);
        QCOMPARE(*response->error->type, u"OAuthException"_s);
        QCOMPARE(*response->error->code, 200);
    }

    void errorAndDataMayComeTogether()
    {
        const auto response = decode(json("{'error': {'message': 'no'}, 'data': [{}]}"));
        QVERIFY(response && response->error && response->data);
    }

    void aRowLacksWhatWasNotAskedFor()
    {
        const auto response = decode(json("{'data': [{'impressions': '361324', 'spend': '5339.5'}]}"));
        const InsightRow &row = response->data->front();
        QCOMPARE(*row.impressions, u"361324"_s);
        QCOMPARE(*row.spend, u"5339.5"_s);
        QVERIFY(!row.inline_link_clicks && !row.cost_per_inline_link_click && !row.frequency);
        QVERIFY(!row.reach && !row.inline_link_click_ctr && !row.actions);
    }

    void aWholeRowIsRead()
    {
        const auto response = decode(json(
            "{'data': [{'account_id': '42', 'impressions': '185', 'spend': '14.35', "
            "'inline_link_clicks': '9', 'cost_per_inline_link_click': '1.594444', 'frequency': '1.2', 'reach': '154', "
            "'inline_link_click_ctr': '4.864865', 'date_start': '2026-06-01', 'date_stop': '2026-06-01', "
            "'actions': [{'action_type': 'lead', 'value': '10', '1d_click': '10', '28d_click': 10}]}], "
            "'paging': {'cursors': {'before': 'MAZDZD', 'after': 'MAZDZD'}}}"));
        QVERIFY(response);
        const InsightRow &row = response->data->front();
        QCOMPARE(*row.impressions, u"185"_s);
        QCOMPARE(*row.spend, u"14.35"_s);
        QCOMPARE(*row.inline_link_clicks, u"9"_s);
        QCOMPARE(*row.cost_per_inline_link_click, u"1.594444"_s);
        QCOMPARE(*row.frequency, u"1.2"_s);
        QCOMPARE(*row.reach, u"154"_s);
        QCOMPARE(*row.inline_link_click_ctr, u"4.864865"_s);
        QCOMPARE(*row.actions->front().action_type, u"lead"_s);
        QCOMPARE(*row.actions->front().value, u"10"_s);
    }

    void anEmptyListOfActionsIsPresent()
    {
        QVERIFY(decode(json("{'data': [{'actions': []}]}"))->data->front().actions->empty());
    }

    void wrongTypesFailTheWholeDecode_data()
    {
        QTest::addColumn<QByteArray>("body");
        for (const char *key : {"impressions", "spend", "inline_link_clicks", "cost_per_inline_link_click", "frequency",
                 "reach", "inline_link_click_ctr"}) {
            QTest::newRow(key) << json("{'data': [{'") + key + json("': 1234}]}");
        }
        QTest::newRow("actions") << json("{'data': [{'actions': {}}]}");
        QTest::newRow("action type") << json("{'data': [{'actions': [{'action_type': 1}]}]}");
        QTest::newRow("action value") << json("{'data': [{'actions': [{'value': 1}]}]}");
        QTest::newRow("in a later row") << json("{'data': [{}, {'spend': 1}]}");
        QTest::newRow("data") << json("{'data': {}}");
        QTest::newRow("error") << json("{'error': 'message'}");
        QTest::newRow("error message") << json("{'error': {'message': 1}}");
        QTest::newRow("error type") << json("{'error': {'type': 1}}");
        QTest::newRow("error code") << json("{'error': {'message': 'no', 'code': '190'}}");
    }

    void wrongTypesFailTheWholeDecode()
    {
        QFETCH(const QByteArray, body);
        QVERIFY(!decode(body));
    }
};

QTEST_GUILESS_MAIN(InsightsResponseTest)
#include "InsightsResponseTest.moc"
