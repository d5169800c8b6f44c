// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "TestDisplay.h"
#include "Views/WindowManager.h"
#include "WindowTree.h"

#include <QClipboard>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// What a shell runs for this text, where curl writes down its arguments, one a line.
QString run(const QString &text)
{
    const QTemporaryDir bin;
    QFile curl(bin.filePath(u"curl"_s));
    if (!curl.open(QIODevice::WriteOnly))
        return {};
    curl.write("#!/bin/sh\nprintf '%s\\n' \"$@\"\n");
    curl.close();
    curl.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
    QProcess shell;
    QProcessEnvironment environment;
    environment.insert(u"PATH"_s, bin.path());
    shell.setProcessEnvironment(environment);
    shell.start(u"/bin/sh"_s, {u"-c"_s, text});
    shell.waitForFinished();
    return QString::fromUtf8(shell.readAll());
}

} // namespace

/// What leaves the guide's command by the clipboard and by the selection, on a screen that has both.
class CopiedCommandTest : public QObject {
    Q_OBJECT

public:
    static void initMain() { static const TestDisplay display; }

private Q_SLOTS:
    void init()
    {
        WindowManager::shared().openSetupGuide();
        m_command = WindowTree::windows(u"Setup Guide"_s).value(0)->findChild<QPlainTextEdit *>();
        m_command->setFocus();
    }

    void cleanup() { WindowManager::shared().closeAll(); }

    void theCopiedCommandRuns()
    {
        QTest::keySequence(m_command, QKeySequence::SelectAll);
        QTest::keySequence(m_command, QKeySequence::Copy);
        const QString expected = u"-X\nGET\nhttps://graph.facebook.com/v21.0/oauth/access_token"
                                 "?grant_type=fb_exchange_token&client_id=YOUR_APP_ID"
                                 "&client_secret=YOUR_APP_SECRET&fb_exchange_token=YOUR_SHORT_TOKEN\n"_s;
        QCOMPARE(run(QApplication::clipboard()->text()), expected);
        QCOMPARE(run(QApplication::clipboard()->text(QClipboard::Selection)), expected);
        QCOMPARE(QApplication::clipboard()->mimeData()->formats().filter(u"html"_s), QStringList());
    }

    void theCommandStandsOnThePageAsGiven()
    {
        QVERIFY(m_command->toPlainText().contains(u"\\\n  ?grant_type"_s));
        QCOMPARE(m_command->toPlainText().count(u"\\\n  "_s), 4);
    }

    void aPartIsCopiedWithoutTheIndentToo_data()
    {
        QTest::addColumn<QString>("from");
        QTest::addColumn<QString>("to");
        QTest::addColumn<QString>("copied");
        QTest::newRow("within a line") << u"grant"_s << u"token\\\n  &client_id"_s << u"grant_type=fb_exchange_"_s;
        QTest::newRow("over a line's end")
            << u"fb_exchange_token\\"_s << u"_ID"_s << u"fb_exchange_token\\\n&client_id=YOUR_APP"_s;
        QTest::newRow("from before an indent") << u"\n  &client_id"_s << u"=YOUR_APP_ID"_s << u"\n&client_id"_s;
        QTest::newRow("from within an indent") << u" &client_id"_s << u"=YOUR_APP_ID"_s << u"&client_id"_s;
        QTest::newRow("to within an indent") << u"YOUR_APP_ID"_s << u" &client_secret"_s << u"YOUR_APP_ID\\\n"_s;
        QTest::newRow("an indent alone") << u"  &client_id"_s << u"&client_id"_s << QString();
    }

    void aPartIsCopiedWithoutTheIndentToo()
    {
        QFETCH(const QString, from);
        QFETCH(const QString, to);
        const auto start = m_command->toPlainText().indexOf(from);
        const auto end = m_command->toPlainText().indexOf(to, start);
        QVERIFY(start >= 0 && end > start);
        QTextCursor selection = m_command->textCursor();
        selection.setPosition(static_cast<int>(start));
        selection.setPosition(static_cast<int>(end), QTextCursor::KeepAnchor);
        m_command->setTextCursor(selection);
        QApplication::clipboard()->setText(u"before"_s);
        QTest::keySequence(m_command, QKeySequence::Copy);
        QTEST(QApplication::clipboard()->text(), "copied");
    }

private:
    QPlainTextEdit *m_command = nullptr;
};

QTEST_MAIN(CopiedCommandTest)
#include "CopiedCommandTest.moc"
