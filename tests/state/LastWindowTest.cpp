// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "App/VanteloApp.h"
#include "TestPreferences.h"
#include "TestSessionBus.h"
#include "Views/WindowManager.h"

#include <QApplication>
#include <QTest>
#include <QTimer>
#include <QWidget>

#include <functional>

using namespace Qt::StringLiterals;

namespace {

constexpr int itsOwnEnd = 0;
constexpr int ourEnd = 7;

/// After as many turns of the event loop; a program that is about to end has none left.
void afterTurns(int count, const std::function<void()> &then)
{
    if (count == 0)
        then();
    else
        QTimer::singleShot(0, [count, then] { afterTurns(count - 1, then); });
}

void closeEveryWindow()
{
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget *const window : windows) {
        if (window->isVisible())
            window->close();
    }
}

} // namespace

/// The whole program, its own main function included.
class LastWindowTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// By it desktops find the icon of our windows, and the name to give to whoever asks who we are.
    void theDesktopKnowsItByItsEntry()
    {
        const TestPreferences preferences;
        QString entry;
        QString version;
        const auto look = [&] {
            entry = QGuiApplication::desktopFileName();
            version = QCoreApplication::applicationVersion();
            QCoreApplication::exit(ourEnd);
        };
        QMetaObject::invokeMethod(this, look, Qt::QueuedConnection);
        char name[] = "vantelo";
        char *arguments[] = {name, nullptr};
        QCOMPARE(VanteloApp::main(1, arguments), ourEnd);
        QCOMPARE(entry, u"app.vantelo.Vantelo"_s);
        QVERIFY(!version.isEmpty());
    }

    void closingItEndsNothing()
    {
        const TestPreferences preferences;
        bool closed = false;
        const auto openAndClose = [&] {
            connect(qApp, &QGuiApplication::lastWindowClosed, this, [&] { closed = true; });
            WindowManager::shared().openSetupGuide();
            closeEveryWindow();
            afterTurns(5, [] { QCoreApplication::exit(ourEnd); });
        };
        QMetaObject::invokeMethod(this, openAndClose, Qt::QueuedConnection);
        char name[] = "vantelo";
        char *arguments[] = {name, nullptr};
        const int code = VanteloApp::main(1, arguments);
        QVERIFY2(code != itsOwnEnd, "the program has ended with its last window");
        QCOMPARE(code, ourEnd);
        QVERIFY(closed);
    }
};

int main(int argc, char **argv)
{
    const TestSessionBus bus;
    LastWindowTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "LastWindowTest.moc"
