// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "TestDisplay.h"
#include "Views/WindowManager.h"
#include "WindowTree.h"

#include <QFile>
#include <QFontDatabase>
#include <QPlainTextEdit>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

/// On a desktop whose user has chosen a proportional font for fixed-width texts.
class FixedFontTest : public QObject {
    Q_OBJECT

public:
    static void initMain()
    {
        static const TestDisplay display;
        static const QTemporaryDir configuration;
        QFile settings(configuration.filePath(u"kdeglobals"_s));
        if (!settings.open(QIODevice::WriteOnly))
            qFatal("the desktop cannot be set up");
        settings.write("[General]\nfixed=sans-serif,10,-1,5,50,0,0,0,0,0\n");
        qputenv("XDG_CONFIG_HOME", configuration.path().toUtf8());
        qputenv("XDG_CURRENT_DESKTOP", "KDE");
        qputenv("KDE_SESSION_VERSION", "5");
    }

private Q_SLOTS:
    void theDesktopsFixedFontIsProportional()
    {
        const QFontMetricsF metrics(QFontDatabase::systemFont(QFontDatabase::FixedFont));
        QVERIFY(metrics.horizontalAdvance(u'i') < metrics.horizontalAdvance(u'W'));
    }

    void theCommandIsMonospacedAllTheSame()
    {
        WindowManager::shared().openSetupGuide();
        QWidget *const guide = WindowTree::windows(u"Setup Guide"_s).value(0);
        const QTextDocument *const command = guide->findChild<QPlainTextEdit *>()->document();
        const QFontMetricsF drawn(command->defaultFont());
        QCOMPARE(drawn.horizontalAdvance(u'i'), drawn.horizontalAdvance(u'W'));
        WindowManager::shared().closeAll();
    }
};

QTEST_MAIN(FixedFontTest)
#include "FixedFontTest.moc"
