// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Helpers.h"
#include "TestDisplay.h"
#include "Views/WindowManager.h"
#include "WindowTree.h"

#include <QProcess>
#include <QTest>
#include <QWidget>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace {

QString asked(const QStringList &question)
{
    QProcess xdotool;
    xdotool.start(u"xdotool"_s, question);
    xdotool.waitForFinished();
    return QString::fromUtf8(xdotool.readAllStandardOutput()).trimmed();
}

/// The titles of the windows that can be seen on the screen.
QStringList onTheScreen()
{
    QStringList titles;
    const QStringList windows = asked({u"search"_s, u"--onlyvisible"_s, u"--name"_s, u"^Setup Guide$"_s}).split(u'\n');
    for (const QString &window : windows)
        titles << asked({u"getwindowname"_s, window});
    titles.removeAll(QString());
    return titles;
}

} // namespace

/// Two workspaces and a window manager that keeps windows where they are.
class WorkspaceTest : public QObject {
    Q_OBJECT

public:
    static void initMain()
    {
        requirePrograms({u"Xvfb"_s, u"openbox"_s, u"xdotool"_s});
        static const TestDisplay display;
        static QProcess windowManager;
        windowManager.start(u"openbox"_s);
        if (!QTest::qWaitFor([] { return asked({u"get_num_desktops"_s}).toInt() > 0; }, 20'000))
            qFatal("no window manager came");
    }

private Q_SLOTS:
    void aWindowOnAnotherWorkspaceComesToTheUser()
    {
        asked({u"set_num_desktops"_s, u"2"_s});
        asked({u"set_desktop"_s, u"0"_s});
        WindowManager::shared().openSetupGuide();
        QTRY_COMPARE(onTheScreen(), QStringList{u"Setup Guide"_s});

        asked({u"set_desktop"_s, u"1"_s});
        QTRY_COMPARE(onTheScreen(), QStringList());
        const QWidget *const guide = WindowTree::windows(u"Setup Guide"_s).first();
        QTRY_VERIFY(!guide->windowHandle()->isExposed()); // nobody asks before the program has heard of the change
        WindowManager::shared().openSetupGuide();
        QTRY_COMPARE(onTheScreen(), QStringList{u"Setup Guide"_s});
        QCOMPARE(asked({u"get_desktop"_s}), u"1"_s);
        QCOMPARE(WindowTree::windows(u"Setup Guide"_s).size(), 1);
        WindowManager::shared().closeAll();
    }
};

QTEST_MAIN(WorkspaceTest)
#include "WorkspaceTest.moc"
