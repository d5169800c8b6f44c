// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Views/MenuBarView.h"
#include "Foundation/Task.h"
#include "Json.h"
#include "LoopbackService.h"
#include "State/AppState.h"
#include "TestClock.h"
#include "TestPreferences.h"

#include <QCoroTask>
#include <QTest>

using namespace Qt::StringLiterals;
using Reply = LoopbackService::Reply;

namespace {

/// A row on one line: its kind, its style where it is not the usual one, and its text.
QString described(const MenuRow &row)
{
    switch (row.kind) {
    case MenuRow::Kind::Divider:
        return u"---"_s;
    case MenuRow::Kind::Button:
        return u"button "_s + row.text;
    case MenuRow::Kind::Link:
        return u"link "_s + row.text + u" -> "_s + row.destination.toString();
    case MenuRow::Kind::Text:
        break;
    }
    const QString style = row.style == MenuRow::Style::Headline  ? u"headline "_s
                          : row.style == MenuRow::Style::Caption ? u"caption "_s
                                                                 : u"text "_s;
    return style + row.text;
}

const QByteArray todayBody = json("{'data': [{'impressions': '12345', 'spend': '1234.5', 'inline_link_clicks': '1234',"
                                  "'cost_per_inline_link_click': '0.125'}]}");

} // namespace

class MenuBarViewTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_preferences = std::make_unique<TestPreferences>();
        m_service = std::make_unique<LoopbackService>();
        m_state = AppState::create();
        m_state->setAccessToken(u"T"_s);
        m_state->setAdAccountId(u"1"_s);
        settle();
    }

    void cleanup()
    {
        m_state.reset();
        m_service.reset();
        m_preferences.reset();
    }

    void healthyAndStaleAccountsShowAllFigures()
    {
        const QStringList expected{
            u"headline 📊 Today"_s,
            u"text 💰 Spend: $1234.50"_s,
            u"text 🔗 Link Clicks: 1,234"_s,
            u"text 💲 CPC: $0.12"_s,
            u"---"_s,
            u"headline 📅 Last 7 Days"_s,
            u"text 💰 Spend: $10.00"_s,
            u"text 👁️ Impressions: 86,420"_s,
            u"text 🔁 Frequency: 2.00"_s,
            u"text 👥 Reach: 43,210"_s,
            u"text 💲 CPC: $1.59"_s,
            u"text 📈 CTR: 1.23%"_s,
            u"text 🎯 Results: 3"_s,
            u"text 💵 Cost/Result: $3.33"_s,
            u"---"_s,
            u"link Open Ads Manager -> https://adsmanager.facebook.com/"_s,
            u"button 🔄 Refresh"_s,
            u"---"_s,
            u"button Settings…"_s,
            u"button Check for Updates…"_s,
            u"---"_s,
            u"button Quit Vantelo"_s,
        };
        refresh(
            todayBody, json("{'data': [{'spend': '10.0', 'impressions': '86420', 'frequency': '2', 'reach': '43210',"
                            "'cost_per_inline_link_click': '1.594444', 'inline_link_click_ctr': '1.234',"
                            "'actions': [{'action_type': 'lead', 'value': '3'}]}]}"));
        QCOMPARE(rows(), expected);
        TestClock::advance(3600);
        refresh();
        QCOMPARE(m_state->status().match([](MonitorStatus::Stale) { return true; }, [](const auto &) { return false; }),
            true);
        QCOMPARE(rows(), expected);
    }

    void withoutCredentialsTheMenuLeadsToTheSetUp()
    {
        m_state->setAccessToken(QString());
        refresh();
        QCOMPARE(rows(), QStringList({u"text ⚪ No credentials configured"_s, u"---"_s, u"button Open Settings…"_s,
                             u"button Setup Guide…"_s, u"---"_s, u"button Quit Vantelo"_s}));
    }

    void anErrorShowsItsMessage()
    {
        refreshWithError("(#200) Needs ads_read & more");
        QCOMPARE(rows(),
            QStringList({u"text ❌ API Error"_s, u"caption (#200) Needs ads_read & more"_s, u"---"_s,
                u"button 🔄 Refresh"_s, u"---"_s, u"button Open Settings…"_s, u"---"_s, u"button Quit Vantelo"_s}));
    }

    void anErrorIsCutAfterSixtyCharactersAsAReaderCountsThem_data()
    {
        QTest::addColumn<QString>("character");
        QTest::newRow("ASCII") << u"x"_s;
        QTest::newRow("umlaut") << u"ü"_s;
        QTest::newRow("combining mark") << u"e\u0301"_s;
        QTest::newRow("two combining marks") << u"a\u0308\u0304"_s;
        QTest::newRow("emoji beyond the first plane") << u"😀"_s;
        QTest::newRow("emoji with a skin tone") << u"👍🏽"_s;
        QTest::newRow("family of joined emoji") << u"👨‍👩‍👧‍👦"_s;
        QTest::newRow("joined emoji with a variation selector") << u"❤️‍🔥"_s;
        QTest::newRow("flag") << u"🇩🇪"_s;
        QTest::newRow("flag of tags") << u"🏴󠁧󠁢󠁥󠁮󠁧󠁿"_s;
        QTest::newRow("keycap") << u"1️⃣"_s;
        QTest::newRow("Hangul syllable") << u"각"_s;
        QTest::newRow("Hangul of single letters") << u"\u1100\u1161\u11a8"_s;
        QTest::newRow("Devanagari with a vowel sign") << u"नि"_s;
    }

    void anErrorIsCutAfterSixtyCharactersAsAReaderCountsThem()
    {
        QFETCH(const QString, character);
        refreshWithError(character.repeated(100).toUtf8());
        QCOMPARE(errorText(), character.repeated(60));
        refreshWithError(character.repeated(60).toUtf8());
        QCOMPARE(errorText(), character.repeated(60));
        refreshWithError(character.repeated(59).toUtf8());
        QCOMPARE(errorText(), character.repeated(59));
    }

    void whatFollowsAnIndicLetterIsCountedAsAReaderCountsIt()
    {
        refreshWithError(u"ਊ🐀"_s.repeated(60).toUtf8());
        QCOMPARE(errorText(), u"ਊ🐀"_s.repeated(30));
        refreshWithError((u"x"_s.repeated(58) + u"ਊ🐀🐀"_s).toUtf8());
        QCOMPARE(errorText(), u"x"_s.repeated(58) + u"ਊ🐀"_s);
        refreshWithError(u"ਊ\\r\\n"_s.repeated(60).toUtf8());
        QCOMPARE(errorText(), u"ਊ\r\n"_s.repeated(30));
        refreshWithError(u"ਊ❤\uFE0F"_s.repeated(60).toUtf8());
        QCOMPARE(errorText(), u"ਊ❤\uFE0F"_s.repeated(30));
        refreshWithError(u"ਊ\u0301"_s.repeated(61).toUtf8());
        QCOMPARE(errorText(), u"ਊ\u0301"_s.repeated(60));
        refreshWithError(u"ਊ🐀\u200D"_s.repeated(60).toUtf8());
        QCOMPARE(errorText(), u"ਊ🐀\u200D"_s.repeated(30));
    }

    void anEmptyErrorIsAnEmptyRow()
    {
        refreshWithError("");
        QCOMPARE(errorText(), QString());
    }

    void anErrorKeepsItsWholeMessageInTheStatus()
    {
        refreshWithError(QByteArray(100, 'x'));
        QCOMPARE(m_state->status().match([](const MonitorStatus::Error &error) { return error.message.size(); },
                     [](const auto &) { return qsizetype{0}; }),
            100);
    }

    void noResultsCostNothing()
    {
        refresh(todayBody, json("{'data': [{'spend': '10.0'}]}"));
        QVERIFY(rows().contains(u"text 🎯 Results: 0"_s));
        QVERIFY(rows().contains(u"text 💵 Cost/Result: $0.00"_s));
    }

    void aSingleResultCostsAllThatWasSpent()
    {
        refresh(todayBody, json("{'data': [{'spend': '10.0', 'actions': [{'action_type': 'lead', 'value': '1'}]}]}"));
        QVERIFY(rows().contains(u"text 💵 Cost/Result: $10.00"_s));
    }

    void negativeResultsCostNothing()
    {
        refresh(todayBody, json("{'data': [{'spend': '10.0', 'actions': [{'action_type': 'lead', 'value': '-2'}]}]}"));
        QVERIFY(rows().contains(u"text 🎯 Results: -2"_s));
        QVERIFY(rows().contains(u"text 💵 Cost/Result: $0.00"_s));
    }

    void moneyIsPrintedAsItIs_data()
    {
        QTest::addColumn<QByteArray>("spend");
        QTest::addColumn<QString>("printed");
        QTest::newRow("negative") << "-1.5"_ba << u"text 💰 Spend: $-1.50"_s;
        QTest::newRow("large") << "12345.6"_ba << u"text 💰 Spend: $12345.60"_s;
        QTest::newRow("infinite") << "inf"_ba << u"text 💰 Spend: $inf"_s;
        QTest::newRow("not a number") << "nan"_ba << u"text 💰 Spend: $nan"_s;
        QTest::newRow("a tie") << "0.125"_ba << u"text 💰 Spend: $0.12"_s;
    }

    void moneyIsPrintedAsItIs()
    {
        QFETCH(const QByteArray, spend);
        refresh(json("{'data': [{'spend': '") + spend + json("'}]}"));
        QTEST(rows().at(1), "printed");
    }

    void figuresAreGroupedByCommasInAnyLocale()
    {
        QLocale::setDefault(QLocale(QLocale::German));
        refresh(todayBody);
        QLocale::setDefault(QLocale::system());
        QVERIFY(rows().contains(u"text 💰 Spend: $1234.50"_s));
        QVERIFY(rows().contains(u"text 🔗 Link Clicks: 1,234"_s));
    }

    void refreshStartsARefreshAndReturnsAtOnce()
    {
        refresh(todayBody);
        const qsizetype requests = m_service->requestsWith("date_preset=today");
        row(u"🔄 Refresh"_s).action();
        QVERIFY(m_state->isLoading());
        settle();
        QCOMPARE(m_service->requestsWith("date_preset=today"), requests + 1);
    }

    void severalClicksStartSeveralRefreshes()
    {
        refreshWithError("no");
        const qsizetype requests = m_service->requestsWith("date_preset=today");
        const MenuRow button = row(u"🔄 Refresh"_s);
        for (int i = 0; i < 3; ++i)
            button.action();
        settle();
        QCOMPARE(m_service->requestsWith("date_preset=today"), requests + 3);
    }

    void onlyButtonsHaveActionsAndOnlyLinksDestinations()
    {
        refresh(todayBody);
        const MenuRows body = MenuBarView(m_state).body();
        for (const MenuRow &row : body) {
            QCOMPARE(static_cast<bool>(row.action), row.kind == MenuRow::Kind::Button);
            QCOMPARE(row.destination.isValid(), row.kind == MenuRow::Kind::Link);
        }
    }

    void quitEndsTheEventLoopWithCodeZero()
    {
        const MenuRow quit = row(u"Quit Vantelo"_s);
        QMetaObject::invokeMethod(
            this, [&] { quit.action(); }, Qt::QueuedConnection);
        QCOMPARE(QCoreApplication::exec(), 0);
    }

private:
    void settle()
    {
        QCoreApplication::processEvents();
        QTRY_COMPARE(Task::running(), 0);
    }

    void refresh() { QCoro::waitFor(m_state->refresh()); }

    void refresh(const QByteArray &today, const QByteArray &lastSevenDays = "{}")
    {
        m_service->answerInsights(today, lastSevenDays);
        refresh();
    }

    void refreshWithError(const QByteArray &message)
    {
        m_service->answerAll(Reply::whole(json("{'error': {'message': '") + message + json("'}}"), 400));
        refresh();
    }

    QStringList rows() const
    {
        QStringList lines;
        const MenuRows body = MenuBarView(m_state).body();
        for (const MenuRow &row : body)
            lines << described(row);
        return lines;
    }

    QString errorText() const { return MenuBarView(m_state).body().at(1).text; }

    MenuRow row(const QString &text) const
    {
        const MenuRows body = MenuBarView(m_state).body();
        for (const MenuRow &row : body) {
            if (row.text == text)
                return row;
        }
        qFatal("no row \"%s\"", qPrintable(text));
    }

    std::unique_ptr<TestPreferences> m_preferences;
    std::unique_ptr<LoopbackService> m_service;
    std::shared_ptr<AppState> m_state;
};

QTEST_GUILESS_MAIN(MenuBarViewTest)
#include "MenuBarViewTest.moc"
