// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Helpers.h"
#include "MenuBar/MenuBarExtra.h"
#include "StatusHost.h"
#include "TestSessionBus.h"

#include <QApplication>
#include <QProcess>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString itemPath = u"/org/ayatana/NotificationItem/vantelo"_s;
const QString menuPath = itemPath + u"/Menu"_s;
const QString item = u"org.kde.StatusNotifierItem"_s;
const QString menu = u"com.canonical.dbusmenu"_s;
const QString properties = u"org.freedesktop.DBus.Properties"_s;

QString error(const QString &name) { return u"org.freedesktop.DBus.Error."_s + name; }

} // namespace

/// A peer on the session bus may call whatever it likes: the program answers, and works on.
class HostileCallsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_host = std::make_unique<StatusHost>();
        m_host->startWatcher();
        m_extra = MenuBarExtra::create();
        m_extra->setRows({MenuRow::line(u"Spend"_s), MenuRow::button(u"Refresh"_s, [this] { ++m_runs; })});
        QTRY_VERIFY(m_host->hasItem());
        QTRY_COMPARE(m_host->labels(), QStringList({u"Spend"_s, u"Refresh"_s}));
    }

    void init() { m_runs = 0; }

    void cleanupTestCase()
    {
        m_extra.reset();
        m_host.reset();
    }

    void callsThatFitNothingGetErrors_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("interface");
        QTest::addColumn<QString>("method");
        QTest::addColumn<QString>("arguments");
        QTest::addColumn<QString>("name");
        const auto call = [](const char *row, const QString &path, const QString &interface, const QString &method,
                              const QString &arguments, const QString &name) {
            QTest::newRow(row) << path << interface << method << arguments << error(name);
        };
        call("texts for a place", itemPath, item, u"ContextMenu"_s, u"('1', '2')"_s, u"UnknownMethod"_s);
        call("half a place", itemPath, item, u"ContextMenu"_s, u"(1,)"_s, u"UnknownMethod"_s);
        call("a number for a token", itemPath, item, u"ProvideXdgActivationToken"_s, u"(7,)"_s, u"UnknownMethod"_s);
        call("bytes for a token", itemPath, item, u"ProvideXdgActivationToken"_s, u"([byte 0xff, 0x00],)"_s,
            u"UnknownMethod"_s);
        call("a method of the menu on the item", itemPath, menu, u"AboutToShow"_s, u"(0,)"_s, u"UnknownInterface"_s);
        call("an unknown interface", menuPath, u"org.example.Wild"_s, u"Event"_s, u"()"_s, u"UnknownInterface"_s);
        call("an unknown object", menuPath + u"/1"_s, menu, u"AboutToShow"_s, u"(0,)"_s, u"UnknownObject"_s);
        call("an unknown property", itemPath, properties, u"Get"_s, u"('%1', 'Colour')"_s.arg(item),
            u"UnknownProperty"_s);
        call("a property of an unknown interface", itemPath, properties, u"Get"_s, u"('org.example.Wild', 'Id')"_s,
            u"UnknownInterface"_s);
        call("a new menu", itemPath, properties, u"Set"_s, u"('%1', 'Menu', <objectpath '/x'>)"_s.arg(item),
            u"PropertyReadOnly"_s);
        call("a name of the wrong type", itemPath, properties, u"Get"_s, u"(1, <2>)"_s, u"UnknownMethod"_s);
        call("an id beyond 32 bits", menuPath, menu, u"AboutToShow"_s, u"(int64 4294967296,)"_s, u"UnknownMethod"_s);
        call("a wild type for an event", menuPath, menu, u"Event"_s, u"(2, <'clicked'>, <0>, uint32 0)"_s,
            u"UnknownMethod"_s);
        call("events within events", menuPath, menu, u"EventGroup"_s, u"([[(2, 'clicked', <0>, uint32 0)]],)"_s,
            u"UnknownMethod"_s);
    }

    void callsThatFitNothingGetErrors()
    {
        QFETCH(const QString, path);
        QFETCH(const QString, interface);
        QFETCH(const QString, method);
        QFETCH(const QString, arguments);
        QFETCH(const QString, name);
        QCOMPARE(answer(path, interface, method, arguments)[u"error"_s].toString(), name);
        checkThatItWorks();
    }

    void theDataOfAnEventMeansNothing_data()
    {
        QTest::addColumn<QString>("data");
        QTest::newRow("an empty list") << u"@a{sv} {}"_s;
        QTest::newRow("a dictionary of everything") << u"{'a': <1>, 'b': <('x', [byte 1], <<<2.5>>>)>}"_s;
        QTest::newRow("nothing but depth") << u"<"_s.repeated(30) + u"1"_s + u">"_s.repeated(30);
        QTest::newRow("a signature") << u"signature 'a{s(iiay)}'"_s;
        QTest::newRow("many numbers") << u"[1"_s + u",2"_s.repeated(100'000) + u']';
        QTest::newRow("a long text") << u'\'' + u"x"_s.repeated(1'000'000) + u'\'';
        QTest::newRow("no number") << u"@d nan"_s;
    }

    void theDataOfAnEventMeansNothing()
    {
        QFETCH(const QString, data);
        const QJsonObject done{{u"value"_s, QJsonArray()}};
        QCOMPARE(m_host->callMenu(u"Event"_s, u"(1, 'clicked', <%1>, uint32 4294967295)"_s.arg(data)), done);
        QCOMPARE(m_host->callMenu(u"Event"_s, u"(2, 'opened', <%1>, uint32 0)"_s.arg(data)), done);
        QCOMPARE(m_host->callMenu(u"Event"_s, u"(99, 'clicked', <%1>, uint32 0)"_s.arg(data))[u"error"_s],
            error(u"InvalidArgs"_s));
        checkThatItWorks();
    }

    void manyUnknownEventsGetOneError()
    {
        const QString event = u"(99, 'clicked', <0>, uint32 0)"_s;
        const QString events = u"([%1%2],)"_s.arg(event, (u',' + event).repeated(20'000));
        QCOMPARE(m_host->callMenu(u"EventGroup"_s, events)[u"error"_s], error(u"InvalidArgs"_s));
        checkThatItWorks();
    }

    void noTokenKeepsProgramsFromBeingStarted()
    {
        const QString token = u"('%1',)"_s.arg(u"x"_s.repeated(200'000));
        m_host->callItem(u"ProvideXdgActivationToken"_s, token);
        QCOMPARE(QProcess::execute(u"true"_s), 0);
        m_host->callItem(u"ProvideXdgActivationToken"_s, u"('short',)"_s);
        QCOMPARE(qgetenv("XDG_ACTIVATION_TOKEN"), "short"_ba);
    }

private:
    QJsonObject answer(const QString &path, const QString &interface, const QString &method, const QString &arguments)
    {
        return m_host->ask(u"answer"_s, {path, interface, method, arguments}).toObject();
    }

    void checkThatItWorks()
    {
        QCoreApplication::processEvents();
        QCOMPARE(m_runs, 0);
        QCOMPARE(m_host->labels(), QStringList({u"Spend"_s, u"Refresh"_s}));
        m_host->click(m_host->idOf(u"Refresh"_s));
        QTRY_COMPARE(m_runs, 1);
    }

    std::unique_ptr<StatusHost> m_host;
    std::unique_ptr<MenuBarExtra> m_extra;
    int m_runs = 0;
};

int main(int argc, char **argv)
{
    requireStatusHost();
    const TestSessionBus bus;
    const QApplication application(argc, argv);
    HostileCallsTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "HostileCallsTest.moc"
