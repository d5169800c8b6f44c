// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Helpers.h"
#include "MenuBar/MenuBarExtra.h"
#include "StatusHost.h"
#include "TestSessionBus.h"

#include <QApplication>
#include <QDesktopServices>
#include <QJsonDocument>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QJsonObject done{{u"value"_s, QJsonArray()}};
const QString refused = u"org.freedesktop.DBus.Error.InvalidArgs"_s;
const QString unknownMethod = u"org.freedesktop.DBus.Error.UnknownMethod"_s;

QJsonObject row(int id, const QString &type, const QString &label, bool enabled)
{
    return {{u"id"_s, id}, {u"type"_s, type}, {u"label"_s, label}, {u"enabled"_s, enabled}, {u"visible"_s, true}};
}

/// What goes out about a row that has a new text: to see, and for screen readers.
QJsonArray newText(int id, const QString &text)
{
    return {id, QJsonObject{{u"label"_s, text}, {u"accessible-desc"_s, text}}};
}

} // namespace

class StatusMenuTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_refreshes = 0;
        m_quits = 0;
        m_host = std::make_unique<StatusHost>();
        m_host->startWatcher();
        m_extra = MenuBarExtra::create();
        m_extra->setRows(figures(u"$1.00"_s));
        QTRY_VERIFY(m_host->hasItem());
        QTRY_COMPARE(m_host->rows().size(), 6);
        m_host->takeSignals();
    }

    void cleanup()
    {
        m_extra.reset();
        m_host.reset();
        QDesktopServices::unsetUrlHandler(u"https"_s);
    }

    void clientsSeeTheRowsAsTheyAre()
    {
        QTRY_COMPARE(m_host->rows(), QJsonArray({
                                         row(1, u"standard"_s, u"📊 Today"_s, false),
                                         row(2, u"standard"_s, u"💰 Spend: $1.00"_s, false),
                                         row(3, u"separator"_s, u""_s, false),
                                         row(4, u"standard"_s, u"Open Ads Manager"_s, true),
                                         row(5, u"standard"_s, u"🔄 Refresh"_s, true),
                                         row(6, u"standard"_s, u"Quit Vantelo"_s, true),
                                     }));
    }

    void textsArriveExactlyButForDoubledUnderscores()
    {
        m_extra->setRows({MenuRow::line(u"a_b__c & <b>d</b> 👁️ \\n %s"_s), MenuRow::line(u"nul\0here"_s)});
        QTRY_COMPARE(m_host->labels(), QStringList({u"a__b____c & <b>d</b> 👁️ \\n %s"_s, u"nul\uFFFDhere"_s}));
    }

    void onlyTheFirstUnderscoreIsDoubledForGnome()
    {
        m_extra->setRows({MenuRow::line(u"a_b_c"_s), MenuRow::line(u"plain"_s)});
        QTRY_COMPARE(m_host->labels(), QStringList({u"a__b__c"_s, u"plain"_s}));
        m_host->takeSignals();
        m_host->stopWatcher();
        m_host->startGnomeShell();
        QTRY_COMPARE(m_host->registrations().size(), 2);
        QTRY_COMPARE(m_host->labels(), QStringList({u"a__b_c"_s, u"plain"_s}));
        m_host->stopWatcher();
        m_host->startWatcher();
        QTRY_COMPARE(m_host->registrations().size(), 3);
        QTRY_COMPARE(m_host->labels(), QStringList({u"a__b__c"_s, u"plain"_s}));
    }

    void unchangedRowsAreNotAnnounced()
    {
        m_extra->setRows(figures(u"$1.00"_s));
        QCOMPARE(m_host->takeSignalNames(), QStringList());
    }

    void changedTextsGoOutTogetherAndAlone()
    {
        MenuRows rows = figures(u"$2.00"_s);
        rows[0].text = u"📊 Yesterday"_s;
        m_extra->setRows(rows);
        const QJsonArray changed{newText(1, u"📊 Yesterday"_s), newText(2, u"💰 Spend: $2.00"_s)};
        QCOMPARE(m_host->takeSignals(), QJsonArray({QJsonObject{{u"member"_s, u"ItemsPropertiesUpdated"_s},
                                            {u"arguments"_s, QJsonArray{changed, QJsonArray()}}}}));
        QTRY_COMPARE(m_host->labels().first(2), QStringList({u"📊 Yesterday"_s, u"💰 Spend: $2.00"_s}));
    }

    void rowsThatComeOrGoMakeANewLayout()
    {
        const int before = revision();
        m_extra->setRows(setUp());
        QCOMPARE(m_host->takeSignals(),
            QJsonArray({QJsonObject{{u"member"_s, u"LayoutUpdated"_s}, {u"arguments"_s, QJsonArray{before + 1, 0}}}}));
        QCOMPARE(revision(), before + 1);
        QTRY_COMPARE(m_host->labels(), QStringList({u"⚪ No credentials configured"_s, u""_s, u"Open Settings…"_s,
                                           u"Setup Guide…"_s, u""_s, u"Quit Vantelo"_s}));
        m_extra->setRows(figures(u"$1.00"_s));
        QTRY_COMPARE(m_host->labels().value(3), u"Open Ads Manager"_s);
        QTRY_COMPARE(m_host->labels().first(2), QStringList({u"📊 Today"_s, u"💰 Spend: $1.00"_s}));
        QCOMPARE(revision(), before + 2);
    }

    void rowsThatComeBackWithOtherTextsAreAnnounced()
    {
        const int spend = m_host->idOf(u"💰 Spend: $1.00"_s);
        m_extra->setRows(setUp());
        const int before = revision();
        m_host->takeSignals();
        m_extra->setRows(figures(u"$2.00"_s));
        // Hosts do not ask again about ids that they know.
        const QJsonArray changed{newText(spend, u"💰 Spend: $2.00"_s)};
        const QJsonArray expected{
            QJsonObject{
                {u"member"_s, u"ItemsPropertiesUpdated"_s}, {u"arguments"_s, QJsonArray{changed, QJsonArray()}}},
            QJsonObject{{u"member"_s, u"LayoutUpdated"_s}, {u"arguments"_s, QJsonArray{before + 1, 0}}},
        };
        QCOMPARE(m_host->takeSignals(), expected);
    }

    void idsStayWithTheirMenuAndComeBackWithIt()
    {
        const QList<int> ofFigures = idsOf(figures(u"$1.00"_s));
        QCOMPARE(idsOf(figures(u"$2.00"_s)), ofFigures);
        const QList<int> ofSetUp = idsOf(setUp());
        QCOMPARE(idsOf(figures(u"$3.00"_s)), ofFigures);
        QCOMPARE(idsOf(setUp()), ofSetUp);
    }

    void menusOfDifferentShapeShareNoId()
    {
        const QList<int> ofFigures = idsOf(figures(u"$1.00"_s));
        const QList<int> ofSetUp = idsOf(setUp());
        for (const int id : ofSetUp)
            QVERIFY(!ofFigures.contains(id));
        const QList<int> one = idsOf({MenuRow::button(u"x"_s, {})});
        QVERIFY(idsOf({MenuRow::button(u"y"_s, {})}) != one); // a click on its way is not for another command
    }

    void anIdNeverChangesItsType()
    {
        QHash<int, QString> types;
        for (const MenuRows &rows : {figures(u"1"_s), setUp(), MenuRows{MenuRow::divider(), MenuRow::line(u"x"_s)},
                 MenuRows{MenuRow::button(u"x"_s, {}), MenuRow::divider(), MenuRow::divider(), MenuRow::divider()}}) {
            m_extra->setRows(rows);
            const auto layout = m_host->callMenu(u"GetLayout"_s, u"(0, -1, ['type'])"_s)[u"value"_s][1][2].toArray();
            QCOMPARE(layout.size(), static_cast<qsizetype>(rows.size()));
            for (const QJsonValue item : layout) {
                const QString type = item[1][u"type"_s].toString();
                QCOMPARE(types.value(item[0].toInt(), type), type);
                types.insert(item[0].toInt(), type);
            }
        }
    }

    void buttonsOfTheSameTextAreTwoRows()
    {
        int first = 0;
        int second = 0;
        m_extra->setRows({MenuRow::button(u"x"_s, [&] { ++first; }), MenuRow::button(u"x"_s, [&] { ++second; })});
        QTRY_COMPARE(m_host->labels(), QStringList({u"x"_s, u"x"_s}));
        m_host->click(m_host->rows()[1][u"id"_s].toInt());
        QTRY_COMPARE(second, 1);
        QCOMPARE(first, 0);
    }

    void aClickRunsTheActionOnce()
    {
        m_host->click(m_host->idOf(u"🔄 Refresh"_s));
        QTRY_COMPARE(m_refreshes, 1);
        m_host->takeSignals(); // whatever was on its way has arrived
        QCOMPARE(m_refreshes, 1);
        QCOMPARE(m_quits, 0);
    }

    void aSingleEventRunsTheActionOnceToo()
    {
        QCOMPARE(m_host->callMenu(u"Event"_s, u"(6, 'clicked', <0>, uint32 0)"_s), done);
        QTRY_COMPARE(m_quits, 1);
        QCOMPARE(m_refreshes, 0);
    }

    void rowsThatLookAsBeforeRunTheirNewActions()
    {
        int newActions = 0;
        m_extra->setRows({MenuRow::button(u"x"_s, [] {})});
        QTRY_COMPARE(m_host->labels(), QStringList({u"x"_s}));
        m_host->takeSignals();
        m_extra->setRows({MenuRow::button(u"x"_s, [&] { ++newActions; })});
        m_host->click(m_host->idOf(u"x"_s));
        QTRY_COMPARE(newActions, 1);
        QCOMPARE(m_host->takeSignals(), QJsonArray());
    }

    void theActionRunsAfterTheReply()
    {
        std::optional<bool> answered;
        m_extra->setRows({MenuRow::button(u"x"_s, [&] { answered = m_host->answersByItself(); })});
        QTRY_COMPARE(m_host->labels(), QStringList({u"x"_s}));
        const QString click = u"(%1, 'clicked', <0>, uint32 0)"_s.arg(m_host->idOf(u"x"_s));
        QCOMPARE(m_host->callMenu(u"Event"_s, click), done);
        QTRY_VERIFY(answered);
        QVERIFY(*answered);
    }

    void aClickOnALinkOpensItsDestination()
    {
        QDesktopServices::setUrlHandler(u"https"_s, this, "openedUrl");
        m_opened.clear();
        m_host->click(m_host->idOf(u"Open Ads Manager"_s));
        QTRY_COMPARE(m_opened, QList<QUrl>({QUrl(u"https://adsmanager.example/"_s)}));
    }

    void clicksOnLinesAndDividersDoNothing()
    {
        for (const int id : {0, 1, 2, 3})
            QCOMPARE(m_host->callMenu(u"Event"_s, u"(%1, 'clicked', <0>, uint32 0)"_s.arg(id)), done);
        QCoreApplication::processEvents();
        QCOMPARE(m_refreshes + m_quits, 0);
    }

    void otherEventsDoNothing()
    {
        QDesktopServices::setUrlHandler(u"https"_s, this, "openedUrl");
        m_opened.clear();
        for (int id = 0; id <= 6; ++id)
            for (const QString &event : {u"opened"_s, u"closed"_s, u"hovered"_s, u"x-vendor"_s})
                QCOMPARE(m_host->callMenu(u"Event"_s, u"(%1, '%2', <'data'>, uint32 1)"_s.arg(id).arg(event)), done);
        expectNothingDone();
    }

    void rowsThatAreGoneAreNotRun()
    {
        const int refresh = m_host->idOf(u"🔄 Refresh"_s);
        m_extra->setRows(setUp());
        const QString late = u"(%1, 'clicked', <0>, uint32 0)"_s.arg(refresh);
        QCOMPARE(m_host->callMenu(u"Event"_s, late)[u"error"_s], refused);
        QCoreApplication::processEvents();
        QCOMPARE(m_refreshes, 0);
    }

    void callsAreAnsweredAsTheProtocolSays_data()
    {
        QTest::addColumn<QString>("method");
        QTest::addColumn<QString>("arguments");
        QTest::addColumn<QByteArray>("answer");
        const auto call = [](const char *name, const QString &method, const QString &arguments, const char *answer) {
            QTest::newRow(name) << method << arguments << QByteArray(answer);
        };
        call("the root without its rows", u"GetLayout"_s, u"(0, 0, @as [])"_s,
            R"([2, [0, {"children-display": "submenu"}, []]])");
        call("one row", u"GetLayout"_s, u"(6, -1, ['label', 'enabled'])"_s,
            R"([2, [6, {"label": "Quit Vantelo", "enabled": true}, []]])");
        call("all of a row", u"GetLayout"_s, u"(3, 1, @as [])"_s,
            R"([2, [3, {"type": "separator", "label": "", "accessible-desc": "", "enabled": false,
                "visible": true}, []]])");
        call("all of a line", u"GetLayout"_s, u"(2, 0, @as [])"_s,
            R"([2, [2, {"type": "standard", "label": "💰 Spend: $1.00", "accessible-desc": "💰 Spend: $1.00",
                "enabled": false, "visible": true}, []]])");
        call("all of a link", u"GetLayout"_s, u"(4, 0, @as [])"_s,
            R"([2, [4, {"type": "standard", "label": "Open Ads Manager", "accessible-desc": "Open Ads Manager",
                "enabled": true, "visible": true}, []]])");
        call("all of a button", u"GetLayout"_s, u"(5, 0, @as [])"_s,
            R"([2, [5, {"type": "standard", "label": "🔄 Refresh", "accessible-desc": "🔄 Refresh",
                "enabled": true, "visible": true}, []]])");
        call("a property that no row has", u"GetLayout"_s, u"(2, 0, ['shortcut'])"_s, R"([2, [2, {}, []]])");
        call("one property", u"GetProperty"_s, u"(2, 'label')"_s, R"(["💰 Spend: $1.00"])");
        call("some properties of some rows", u"GetGroupProperties"_s, u"([6, 2, 99, 6], ['label'])"_s,
            R"([[[2, {"label": "💰 Spend: $1.00"}], [6, {"label": "Quit Vantelo"}]]])");
        call("the menu opens", u"AboutToShow"_s, u"(0,)"_s, "[false]");
        call("parts of the menu open", u"AboutToShowGroup"_s, u"([0, 99],)"_s, "[[], [99]]");
        call("nothing opens", u"AboutToShowGroup"_s, u"(@ai [],)"_s, "[[], []]");
        call("some events", u"EventGroup"_s, u"([(3, 'clicked', <0>, uint32 0), (99, 'clicked', <0>, uint32 0)],)"_s,
            "[[99]]");
        call("no events", u"EventGroup"_s, u"(@a(isvu) [],)"_s, "[[]]");
    }

    void callsAreAnsweredAsTheProtocolSays()
    {
        QFETCH(const QString, method);
        QFETCH(const QString, arguments);
        QFETCH(const QByteArray, answer);
        QDesktopServices::setUrlHandler(u"https"_s, this, "openedUrl");
        m_opened.clear();
        QCOMPARE(m_host->callMenu(method, arguments)[u"value"_s].toArray(), QJsonDocument::fromJson(answer).array());
        expectNothingDone();
    }

    void theMenuSaysWhatItSpeaks()
    {
        const auto answer = m_host->ask(
            u"answer"_s, {u"/org/ayatana/NotificationItem/vantelo/Menu"_s, u"org.freedesktop.DBus.Properties"_s,
                             u"GetAll"_s, u"('com.canonical.dbusmenu',)"_s});
        const QJsonObject properties{{u"Version"_s, 3}, {u"Status"_s, u"normal"_s}, {u"TextDirection"_s, u"ltr"_s},
            {u"IconThemePath"_s, QJsonArray()}};
        QCOMPARE(answer[u"value"_s], QJsonArray({properties}));
    }

    void wrongCallsGetErrors_data()
    {
        QTest::addColumn<QString>("method");
        QTest::addColumn<QString>("arguments");
        QTest::addColumn<QString>("error");
        const auto call = [](const char *name, const QString &method, const QString &arguments, const QString &error) {
            QTest::newRow(name) << method << arguments << error;
        };
        call("layout of an unknown row", u"GetLayout"_s, u"(99, -1, @as [])"_s, refused);
        call("layout of a negative row", u"GetLayout"_s, u"(-1, -1, @as [])"_s, refused);
        call("property of an unknown row", u"GetProperty"_s, u"(99, 'label')"_s, refused);
        call("unknown property", u"GetProperty"_s, u"(1, 'colour')"_s, refused);
        call("click on an unknown row", u"Event"_s, u"(99, 'clicked', <0>, uint32 0)"_s, refused);
        call("clicks on unknown rows only", u"EventGroup"_s, u"([(99, 'clicked', <0>, uint32 0)],)"_s, refused);
        call("an unknown row opens", u"AboutToShow"_s, u"(99,)"_s, refused);
        call("only unknown rows open", u"AboutToShowGroup"_s, u"([98, 99],)"_s, refused);
        call("a text for an id", u"GetLayout"_s, u"('0', -1, @as [])"_s, unknownMethod);
        call("no arguments", u"Event"_s, u"()"_s, unknownMethod);
        call("events of another shape", u"EventGroup"_s, u"([(1, 'clicked')],)"_s, unknownMethod);
        call("texts for ids", u"AboutToShowGroup"_s, u"(['1'],)"_s, unknownMethod);
        call("an unknown method", u"Rename"_s, u"(1, 'x')"_s, unknownMethod);
    }

    void wrongCallsGetErrors()
    {
        QFETCH(const QString, method);
        QFETCH(const QString, arguments);
        QFETCH(const QString, error);
        QCOMPARE(m_host->callMenu(method, arguments)[u"error"_s], error);
        QCOMPARE(m_host->labels().size(), 6);
        QCOMPARE(m_refreshes + m_quits, 0);
    }

    void hugeCallsGetSmallAnswers()
    {
        const QString ids = u"[1"_s + u",1"_s.repeated(200'000) + u']';
        const QJsonObject answer = m_host->callMenu(u"GetGroupProperties"_s, u"(%1, ['label'])"_s.arg(ids));
        QCOMPARE(answer[u"value"_s][0].toArray().size(), 1);
        const QString names = u"['x'"_s + u",'x'"_s.repeated(100'000) + u']';
        QCOMPARE(m_host->callMenu(u"GetLayout"_s, u"(0, -1, %1)"_s.arg(names))[u"value"_s][1][2].toArray().size(), 6);
        QCOMPARE(m_host->labels().size(), 6);
    }

    Q_INVOKABLE void openedUrl(const QUrl &url) { m_opened << url; }

private:
    MenuRows figures(const QString &spend)
    {
        return {
            MenuRow::line(u"📊 Today"_s, MenuRow::Style::Headline),
            MenuRow::line(u"💰 Spend: "_s + spend),
            MenuRow::divider(),
            MenuRow::link(u"Open Ads Manager"_s, QUrl(u"https://adsmanager.example/"_s)),
            MenuRow::button(u"🔄 Refresh"_s, [this] { ++m_refreshes; }),
            MenuRow::button(u"Quit Vantelo"_s, [this] { ++m_quits; }),
        };
    }

    MenuRows setUp()
    {
        return {
            MenuRow::line(u"⚪ No credentials configured"_s),
            MenuRow::divider(),
            MenuRow::button(u"Open Settings…"_s, [] {}),
            MenuRow::button(u"Setup Guide…"_s, [] {}),
            MenuRow::divider(),
            MenuRow::button(u"Quit Vantelo"_s, [this] { ++m_quits; }),
        };
    }

    void expectNothingDone()
    {
        QCOMPARE(m_host->takeSignals(), QJsonArray()); // and whatever was on its way has arrived
        QCoreApplication::processEvents();
        QCOMPARE(m_refreshes + m_quits, 0);
        QCOMPARE(m_opened, QList<QUrl>());
    }

    /// The ids of all rows once the menu has these.
    QList<int> idsOf(const MenuRows &rows)
    {
        m_extra->setRows(rows);
        QList<int> ids;
        const QJsonArray layout = m_host->callMenu(u"GetLayout"_s, u"(0, -1, ['type'])"_s)[u"value"_s][1][2].toArray();
        for (const QJsonValue &item : layout)
            ids << item[0].toInt();
        return ids;
    }

    int revision() { return m_host->callMenu(u"GetLayout"_s, u"(0, 0, @as [])"_s)[u"value"_s][0].toInt(); }

    std::unique_ptr<StatusHost> m_host;
    std::unique_ptr<MenuBarExtra> m_extra;
    QList<QUrl> m_opened;
    int m_refreshes = 0;
    int m_quits = 0;
};

int main(int argc, char **argv)
{
    requireStatusHost();
    const TestSessionBus bus;
    const QApplication application(argc, argv);
    StatusMenuTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "StatusMenuTest.moc"
