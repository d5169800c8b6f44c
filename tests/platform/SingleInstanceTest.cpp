// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Process/SingleInstance.h"
#include "Process/Linux/ApplicationService.h"
#include "TestSessionBus.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDir>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QString probe() { return QCoreApplication::applicationDirPath() + u"/instance_probe"_s; }

/// Asks for the program as launchers do, and tells what kind of answer comes.
QDBusMessage::MessageType launch(const QString &method, const QVariantList &arguments)
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        u"app.vantelo.Vantelo.Test"_s, u"/app/vantelo/Vantelo/Test"_s, u"org.freedesktop.Application"_s, method);
    call.setArguments(arguments);
    return QDBusConnection::sessionBus().call(call, QDBus::BlockWithGui).type();
}

/// Another process that claims the place.
class Probe {
public:
    explicit Probe(const QProcessEnvironment &environment)
    {
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.setProcessEnvironment(environment);
        m_process.start(probe(), QStringList());
    }

    /// What it says next; this process goes on meanwhile.
    QByteArray line()
    {
        if (!QTest::qWaitFor([this] { return m_process.canReadLine(); }, 20'000))
            return "silence";
        return m_process.readLine().trimmed();
    }
    void end()
    {
        m_process.closeWriteChannel();
        QVERIFY(m_process.waitForFinished());
    }
    void kill()
    {
        m_process.kill();
        QVERIFY(m_process.waitForFinished());
    }

private:
    QProcess m_process;
};

} // namespace

class SingleInstanceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        qunsetenv("XDG_ACTIVATION_TOKEN");
        m_environment = QProcessEnvironment::systemEnvironment();
    }

    void aSecondClaimActivatesTheFirstAndGetsNothing()
    {
        const auto first = SingleInstance::claim();
        QVERIFY(first);
        int activations = 0;
        first->onActivation([&] { ++activations; });
        QCOMPARE(Probe(m_environment).line(), QByteArray("taken"));
        QTRY_COMPARE(activations, 1);
        QCOMPARE(Probe(m_environment).line(), QByteArray("taken"));
        QTRY_COMPARE(activations, 2);
    }

    void theActivationTokenIsHandedOver()
    {
        Probe first(m_environment);
        QCOMPARE(first.line(), QByteArray("claimed"));
        m_environment.insert(u"XDG_ACTIVATION_TOKEN"_s, u"a-token"_s);
        QCOMPARE(Probe(m_environment).line(), QByteArray("taken"));
        QCOMPARE(first.line(), QByteArray("activated a-token"));
        first.end();
    }

    void anActivationBeforeAnybodyListensIsNotLost()
    {
        const auto first = SingleInstance::claim();
        QVERIFY(first);
        QCOMPARE(Probe(m_environment).line(), QByteArray("taken"));
        int activations = 0;
        first->onActivation([&] { ++activations; });
        QTRY_COMPARE(activations, 1);
    }

    void thePlaceIsFreeAgainWhenTheFirstEnds()
    {
        Probe first(m_environment);
        QCOMPARE(first.line(), QByteArray("claimed"));
        first.end();
        Probe second(m_environment);
        QCOMPARE(second.line(), QByteArray("claimed"));
        second.end();
        QVERIFY(SingleInstance::claim());
        QVERIFY(SingleInstance::claim());
    }

    void thePlaceIsFreeAgainWhenTheFirstIsKilled()
    {
        Probe first(m_environment);
        QCOMPARE(first.line(), QByteArray("claimed"));
        first.kill();
        // The bus notices a moment later.
        QTRY_VERIFY(!QDBusConnection::sessionBus().interface()->isServiceRegistered(u"app.vantelo.Vantelo.Test"_s));
        Probe second(m_environment);
        QCOMPARE(second.line(), QByteArray("claimed"));
        second.end();
    }

    void aFirstThatDoesNotAnswerIsNotWaitedForLong()
    {
        const auto first = SingleInstance::claim();
        QVERIFY(first);
        QProcess second;
        second.start(probe(), QStringList());
        QVERIFY(second.waitForFinished(10'000)); // blocks this process, the first, meanwhile
        QCOMPARE(second.readAll(), QByteArray("taken\n"));
    }

    void launchersReachTheFirstThroughTheDesktopsInterface_data()
    {
        QTest::addColumn<QString>("method");
        QTest::addColumn<QVariantList>("arguments");
        const QVariantMap platformData{{u"activation-token"_s, u"t"_s}};
        QTest::newRow("Activate") << u"Activate"_s << QVariantList{platformData};
        QTest::newRow("Open") << u"Open"_s << QVariantList{QStringList{u"file:///"_s}, platformData};
        QTest::newRow("ActivateAction") << u"ActivateAction"_s
                                        << QVariantList{
                                               u"settings"_s, QVariant::fromValue(QVariantList{}), platformData};
    }

    void launchersReachTheFirstThroughTheDesktopsInterface()
    {
        QFETCH(const QString, method);
        QFETCH(const QVariantList, arguments);
        const auto first = SingleInstance::claim();
        QVERIFY(first);
        int activations = 0;
        first->onActivation([&] { ++activations; });
        QCOMPARE(launch(method, arguments), QDBusMessage::ReplyMessage);
        QTRY_COMPARE(activations, 1);
        QCOMPARE(qEnvironmentVariable("XDG_ACTIVATION_TOKEN"), u"t"_s);
    }

    /// No program could be started with it in the environment, not even the browser.
    void aTokenOfAnyLengthActivatesButIsNotKept()
    {
        const auto first = SingleInstance::claim();
        QVERIFY(first);
        int activations = 0;
        first->onActivation([&] { ++activations; });
        const QVariantMap platformData{{u"activation-token"_s, QString(200'000, u't')}};
        QCOMPARE(launch(u"Activate"_s, {platformData}), QDBusMessage::ReplyMessage);
        QTRY_COMPARE(activations, 1);
        QCOMPARE(qEnvironmentVariable("XDG_ACTIVATION_TOKEN"), QString());
    }

    void nonsenseActivatesNothing()
    {
        const auto first = SingleInstance::claim();
        QVERIFY(first);
        int activations = 0;
        first->onActivation([&] { ++activations; });
        QCOMPARE(launch(u"Activate"_s, {42}), QDBusMessage::ErrorMessage);
        QCoreApplication::processEvents();
        QCOMPARE(activations, 0);
    }

    void eachDomainHasAValidNameOfItsOwn_data()
    {
        QTest::addColumn<QString>("domain");
        QTest::addColumn<QString>("name");
        QTest::newRow("product") << u"Vantelo"_s << u"app.vantelo.Vantelo"_s;
        QTest::newRow("demo") << u"Vantelo Demo"_s << u"app.vantelo.Vantelo.Demo"_s;
        QTest::newRow("digits, also at the end") << u"a1 2b Z9{"_s << u"app.vantelo.a1._32b.Z9_7b"_s;
        QTest::newRow("punctuation") << u"Vantelo 2.x-é"_s << u"app.vantelo.Vantelo._32_2ex_2d_c3_a9"_s;
    }

    void eachDomainHasAValidNameOfItsOwn()
    {
        QFETCH(const QString, domain);
        QTEST(applicationBusName(domain), "name");
        QDBusConnectionInterface *const bus = QDBusConnection::sessionBus().interface();
        QVERIFY(bus->registerService(applicationBusName(domain)).isValid());
        QVERIFY(bus->unregisterService(applicationBusName(domain)).isValid());
    }

    void withoutABusALockFileKeepsThePlace()
    {
        const QTemporaryDir temporary;
        m_environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, u"unix:path=/nonexistent/bus"_s);
        m_environment.insert(u"TMPDIR"_s, temporary.path());
        Probe first(m_environment);
        QCOMPARE(first.line(), QByteArray("claimed"));
        QCOMPARE(Probe(m_environment).line(), QByteArray("taken"));
        first.kill();
        Probe second(m_environment);
        QCOMPARE(second.line(), QByteArray("claimed"));
        second.end();
        QCOMPARE(QDir(temporary.path()).entryList(QDir::Files | QDir::Hidden), QStringList());
    }

    void aBusThatRefusesTheNameLeavesThePlaceToTheLockFile()
    {
        const QTemporaryDir temporary;
        const QByteArray usual = qgetenv("DBUS_SESSION_BUS_ADDRESS");
        const TestSessionBus strict(TestSessionBus::Names::Refused);
        m_environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"));
        m_environment.insert(u"TMPDIR"_s, temporary.path());
        qputenv("DBUS_SESSION_BUS_ADDRESS", usual);
        Probe first(m_environment);
        QCOMPARE(first.line(), QByteArray("claimed"));
        QCOMPARE(QDir(temporary.path()).entryList(QDir::Files).size(), 1);
        QCOMPARE(Probe(m_environment).line(), QByteArray("taken"));
        first.end();
    }

    void aTemporaryDirectoryThatCannotBeWrittenIsNoReasonNotToRun()
    {
        m_environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, u"unix:path=/nonexistent/bus"_s);
        m_environment.insert(u"TMPDIR"_s, u"/nonexistent"_s);
        Probe first(m_environment);
        QCOMPARE(first.line(), QByteArray("claimed"));
        first.end();
    }

private:
    QProcessEnvironment m_environment;
};

int main(int argc, char **argv)
{
    const TestSessionBus bus;
    const QApplication application(argc, argv);
    SingleInstanceTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "SingleInstanceTest.moc"
