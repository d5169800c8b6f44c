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
