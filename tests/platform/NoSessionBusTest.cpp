// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Helpers.h"
#include "MenuBar/MenuBarExtra.h"
#include "TestDisplay.h"

#include <QApplication>
#include <QMenu>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

QStringList complaints;

void complain(QtMsgType, const QMessageLogContext &, const QString &message) { complaints << message; }

bool aMenuIsReady()
{
    return std::ranges::any_of(QApplication::topLevelWidgets(), [](const QWidget *widget) {
        const auto *menu = qobject_cast<const QMenu *>(widget);
        return menu && menu->actions().size() == 1;
    });
}

} // namespace

class NoSessionBusTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theExtraWaitsInSilenceForALegacyTray()
    {
        const QtMessageHandler before = qInstallMessageHandler(complain);
        auto extra = MenuBarExtra::create();
        extra->setLabel({.dot = StatusDot::Green, .text = u"1"_s, .accessibleDescription = {}});
        extra->setRows({MenuRow::button(u"Quit"_s, [] {})});
        QVERIFY(!aMenuIsReady());
        QTRY_VERIFY_WITH_TIMEOUT(aMenuIsReady(), 20'000);
        extra->setLabel({.dot = StatusDot::Red, .text = u"2"_s, .accessibleDescription = {}});
        extra->setRows({MenuRow::line(u"1"_s)});
        QVERIFY(aMenuIsReady());
        extra.reset();
        QVERIFY(!aMenuIsReady());
        qInstallMessageHandler(before);
        QCOMPARE(complaints.join(u'\n'), QString());
    }
};

int main(int argc, char **argv)
{
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/bus");
    requirePrograms({u"Xvfb"_s});
    const TestDisplay display;
    const QApplication application(argc, argv);
    NoSessionBusTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "NoSessionBusTest.moc"
