// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "StatusHost.h"
#include "Helpers.h"
#include "MenuBar/MenuBarExtra.h"
#include "TestSessionBus.h"

#include <QApplication>
#include <QTest>

using namespace Qt::StringLiterals;

class StatusHostTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_host = std::make_unique<StatusHost>();
        m_host->registrations(); // it runs
    }

    void cleanup()
    {
        m_extra.reset();
        m_host.reset();
    }

    void theItemRegistersByPathOnce()
    {
        m_host->startWatcher();
        show();
        QTRY_COMPARE(m_host->registrations().size(), 1);
        const QJsonValue registration = m_host->registrations()[0];
        QVERIFY(registration[0].toString().startsWith(u':')); // a unique name: no well-known one is claimed
        QCOMPARE(registration[1].toString(), u"/org/ayatana/NotificationItem/vantelo"_s);
        m_host->takeSignals();
        QCOMPARE(m_host->registrations().size(), 1);
    }

    void aWatcherThatComesLateIsFound()
    {
        show();
        QCoreApplication::processEvents();
        QCOMPARE(m_host->registrations().size(), 0);
        m_host->startWatcher();
        QTRY_COMPARE(m_host->registrations().size(), 1);
        QCOMPARE(m_host->property(u"XAyatanaLabel"_s), u"12,345"_s);
    }

    void aRestartedPanelGetsTheItemAgain()
    {
        m_host->startWatcher();
        show();
        for (int times = 1; times <= 3; ++times) {
            QTRY_COMPARE(m_host->registrations().size(), times);
            m_host->stopWatcher();
            m_host->startWatcher();
        }
        QTRY_COMPARE(m_host->registrations().size(), 4);
        QCOMPARE(m_host->registrations()[3], m_host->registrations()[0]);
    }

    void aWatcherThatReplacesAnotherGetsTheItem()
    {
        m_host->startWatcher();
        show();
        QTRY_COMPARE(m_host->registrations().size(), 1);
        StatusHost successor;
        successor.startWatcher();
        QTRY_COMPARE(successor.registrations().size(), 1);
        QCOMPARE(successor.property(u"XAyatanaLabel"_s), u"12,345"_s);
        QCOMPARE(m_host->registrations().size(), 1);
    }

    void aWatcherThatDiesIsReplaced()
    {
        auto first = std::make_unique<StatusHost>();
        first->startWatcher();
        show();
        QTRY_COMPARE(first->registrations().size(), 1);
        first.reset();
        m_host->startWatcher();
        QTRY_COMPARE(m_host->registrations().size(), 1);
    }

    void aWatcherThatIsNotReadyYetIsAskedAgain()
    {
        m_host->ask(u"refuse_registrations"_s, {2});
        m_host->startWatcher();
        show();
        QTRY_COMPARE(m_host->registrations().size(), 1);
    }

    void aRegistrationThatIsLostIsRepeatedUntilTheItemIsListed()
    {
        m_host->set(u"losses"_s, 2);
        m_host->startWatcher();
        show();
        QTRY_COMPARE(m_host->registrations().size(), 3);
        QCOMPARE(m_host->property(u"XAyatanaLabel"_s), u"12,345"_s);
        registersNoMore();
    }

    void aWatcherThatLosesRegistrationsWhileItStartsGetsTheItem()
    {
        show();
        QCoreApplication::processEvents();
        for (int starts = 1; starts <= 2; ++starts) {
            m_host->set(u"losses"_s, 1);
            m_host->startWatcher();
            QTRY_COMPARE(m_host->registrations().size(), 2 * starts);
            m_host->stopWatcher();
        }
    }

    void aWatcherThatListsLateHearsOfTheItemOnce()
    {
        m_host->set(u"looks_before"_s, 2);
        m_host->startWatcher();
        show();
        registersNoMore();
        QCOMPARE(m_host->registrations().size(), 1);
    }

    void aWatcherThatTellsOfTheItemIsNotKeptWaiting()
    {
        m_host->set(u"losses"_s, 3); // four seconds go by before the fifth registration
        m_host->set(u"delay"_s, 100);
        m_host->startWatcher();
        show();
        QTRY_COMPARE(m_host->registrations().size(), 4);
        QVERIFY(QTest::qWaitFor([this] { return !m_host->reminders().isEmpty(); }, 3000));
        registersNoMore();
    }

    void aListedItemIsKnownInEveryForm_data()
    {
        QTest::addColumn<QJsonValue>("form");
        QTest::newRow("Plasma") << QJsonValue(u"{name}{path}"_s);
        QTest::newRow("GNOME 43 to 48") << QJsonValue(u"{name}@{path}"_s);
        QTest::newRow("GNOME 51") << QJsonValue(u"{path}"_s);
        QTest::newRow("name") << QJsonValue(u"{name}"_s);
        QTest::newRow("no list") << QJsonValue();
    }

    void aListedItemIsKnownInEveryForm()
    {
        QFETCH(const QJsonValue, form);
        m_host->set(u"form"_s, form);
        m_host->startWatcher();
        show();
        registersNoMore();
        QCOMPARE(m_host->registrations().size(), 1);
    }

    void anotherProgramsItemIsNotTakenForOurs()
    {
        m_host->set(u"form"_s, u"{name}{path}s-neighbour"_s);
        m_host->startWatcher();
        show();
        QTRY_VERIFY(m_host->registrations().size() > 1);
    }

    void theTextReachesAHostThatDrawsItAtASignalAlone_data()
    {
        QTest::addColumn<int>("milliseconds");
        for (const int milliseconds : {0, 50, 300, 2000})
            QTest::addRow("which listens after %d ms", milliseconds) << milliseconds;
    }

    void theTextReachesAHostThatDrawsItAtASignalAlone()
    {
        QFETCH(const int, milliseconds);
        m_host->set(u"ears_after"_s, milliseconds);
        m_host->startWatcher();
        show();
        QVERIFY(QTest::qWaitFor([this] { return textIsDrawn(); }, 30'000));
    }

    void theTextIsBackWithAPanelThatRestarts()
    {
        m_host->set(u"ears_after"_s, 50);
        m_host->startWatcher();
        show();
        QTRY_VERIFY(textIsDrawn());
        m_host->stopWatcher(); // as a screen lock does on GNOME
        m_host->set(u"drawn_text"_s, QJsonObject());
        m_host->startWatcher();
        QTRY_VERIFY(textIsDrawn());
    }

    // What is sent to it meanwhile reaches it in one moment, in which it may be deaf.
    void aHostThatStandsStillIsRemindedOfTheTextAfterwards()
    {
        m_host->set(u"standstill"_s, 2.0);
        m_host->startWatcher();
        show();
        QTRY_VERIFY(m_host->reminders().size() >= 3);
        const QJsonArray times = m_host->reminders();
        for (int i = 1; i < 3; ++i)
            QVERIFY2(times[i].toDouble() - times[i - 1].toDouble() > 0.08, qPrintable(QString::number(i)));
    }

    void theItemIsCompleteWhenItRegisters()
    {
        m_host->startWatcher();
        show();
        QTRY_COMPARE(m_host->registrations().size(), 1);
        QCOMPARE(m_host->property(u"XAyatanaLabel"_s), u"12,345"_s);
        QTRY_COMPARE(m_host->labels(), QStringList({u"a_row"_s.replace(u'_', u"__"_s)}));
    }

    void gnomeIsKnownBeforeTheItemRegisters()
    {
        m_host->startGnomeShell();
        show();
        QTRY_COMPARE(m_host->registrations().size(), 1);
        m_extra->setRows({MenuRow::line(u"a_b_c"_s)});
        QTRY_COMPARE(m_host->labels(), QStringList({u"a__b_c"_s}));
    }

    void anotherProgramsGnomeNameChangesNothing()
    {
        StatusHost shell;
        shell.ask(u"own"_s, {u"org.gnome.Shell"_s});
        m_host->startWatcher();
        show();
        QTRY_COMPARE(m_host->registrations().size(), 1);
        m_extra->setRows({MenuRow::line(u"a_b_c"_s)});
        QTRY_COMPARE(m_host->labels(), QStringList({u"a__b__c"_s}));
    }

    void theItemGoesWithTheExtra()
    {
        m_host->startWatcher();
        show();
        QTRY_COMPARE(m_host->registrations().size(), 1);
        QVERIFY(m_host->callItem(u"Scroll"_s, u"(1, 'vertical')"_s).contains(u"value"_s));
        m_extra.reset();
        QTRY_VERIFY(m_host->callItem(u"Scroll"_s, u"(1, 'vertical')"_s).contains(u"error"_s));
    }

private:
    void show()
    {
        m_extra = MenuBarExtra::create();
        m_extra->setLabel({.dot = StatusDot::Green, .text = u"12,345"_s, .accessibleDescription = {}});
        m_extra->setRows({MenuRow::line(u"a_row"_s)});
    }

    /// At the signal that the protocol has for it, and at the one that GNOME's extension 59 heeds.
    bool textIsDrawn()
    {
        return m_host->textDrawnAt(u"XAyatanaNewLabel"_s) == u"12,345"_s &&
               m_host->textDrawnAt(u"PropertiesChanged"_s) == u"12,345"_s;
    }

    /// Waits until the item knows that it is listed, and longer than the first pause between two registrations.
    void registersNoMore()
    {
        QTRY_VERIFY(!m_host->reminders().isEmpty());
        const auto before = m_host->registrations();
        QTRY_VERIFY(m_host->reminders().size() >= 3);
        QCOMPARE(m_host->registrations(), before);
    }

    std::unique_ptr<StatusHost> m_host;
    std::unique_ptr<MenuBarExtra> m_extra;
};

int main(int argc, char **argv)
{
    requireStatusHost();
    const TestSessionBus bus;
    const QApplication application(argc, argv);
    StatusHostTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "StatusHostTest.moc"
