// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "SettingsFixture.h"

#include <QClipboard>
#include <QDir>
#include <QFile>
#include <QInputMethodEvent>
#include <QProcess>
#include <QSignalSpy>
#include <QTimer>

/// What other programs do to the preference file while the Settings window is open.
class StoredValuesTest : public SettingsFixture {
    Q_OBJECT

private Q_SLOTS:
    void whatAnotherProgramStoresAppears_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QString>("change"); // of the file "$1" to the content "$2"
        const QString replaced = uR"(printf "$2" > "$1.draft" && mv "$1.draft" "$1")"_s;
        const QString inPlace = uR"(printf "$2" > "$1")"_s;
        QTest::newRow("the file replaced") << stored << replaced;
        QTest::newRow("the file written in place") << stored << inPlace;
        QTest::newRow("the file removed and made again") << stored << u"rm \"$1\"; "_s + inPlace;
        QTest::newRow("no file before") << ""_ba << u"mkdir -p \"${1%/*}\"; "_s + inPlace;
        QTest::newRow("its folder removed and made again")
            << stored << u"rm -r \"${1%/*}\"; mkdir \"${1%/*}\"; "_s + replaced;
        QTest::newRow("moved elsewhere, with a link to it")
            << stored << uR"(d=${1%/*}/../new; mkdir "$d"; mv "$1" "$d/moved"; ln -s ../new/moved "$1"; )"_s + inPlace;
    }

    void whatAnotherProgramStoresAppears()
    {
        QFETCH(const QByteArray, before);
        QFETCH(const QString, change);
        if (!before.isEmpty())
            m_preferences->writeFile(before);
        open();
        QCoreApplication::processEvents(); // what the opening has left to do
        changeFile(change, "[General]\\naccessToken=EAnew\\nadAccountId=act_2\\nstaleThresholdMinutes=25\\n"_ba);
        QTRY_COMPARE(accountField()->text(), u"act_2"_s);
        QCOMPARE(tokenField()->text(), u"EAnew"_s);
        QCOMPARE(threshold(), u"25"_s);
        QVERIFY(testButton()->isEnabled());
    }

    void aFileThatWasReplacedIsWatchedOn()
    {
        m_preferences->writeFile(stored);
        open();
        for (int account = 2; account < 6; ++account) {
            changeFile(account % 2 == 0 ? u"printf \"$2\" > \"$1.draft\" && mv \"$1.draft\" \"$1\""_s
                                        : u"printf \"$2\" > \"$1\""_s,
                "[General]\\nadAccountId=" + QByteArray::number(account));
            QTRY_COMPARE(accountField()->text(), QString::number(account));
        }
    }

    void whatIsStoredBehindALinkAppearsEachTime()
    {
        m_preferences->writeFile(stored);
        const QTemporaryDir elsewhere;
        const QString target = elsewhere.filePath(u"target.conf"_s);
        QVERIFY(QFile::rename(m_preferences->fileName(), target));
        QVERIFY(QFile::link(target, m_preferences->fileName()));
        open();
        for (const QByteArray account : {"act_2", "act_3", "act_4"}) {
            run(uR"(printf "$2" > "$1.draft" && mv "$1.draft" "$1")"_s, target, "[General]\\nadAccountId=" + account);
            QTRY_COMPARE(accountField()->text(), QString::fromLatin1(account));
        }
    }

    void aFileThatIsBeingWrittenInPlaceDoesNotClearTheForm()
    {
        m_preferences->writeFile(stored);
        open();
        QCoreApplication::processEvents(); // what the opening has left to do
        const QSignalSpy changes(accountField(), &QLineEdit::textChanged);
        m_preferences->writeFile({});
        QTimer::singleShot(20ms, this, [this] { m_preferences->writeFile("[General]\nadAccountId=act_2\n"); });
        QTRY_COMPARE(accountField()->text(), u"act_2"_s);
        QCOMPARE(changes.size(), 1);
    }

    void everyChangeOfManyIsSeenInTheEnd()
    {
        m_preferences->writeFile(stored);
        open();
        for (int account = 10; account <= 99; ++account)
            m_preferences->write(u"adAccountId"_s, account);
        QTRY_COMPARE(accountField()->text(), u"99"_s);
    }

    void whatDisappearsFromTheStoreDisappearsFromTheForm()
    {
        m_preferences->writeFile(stored);
        open();
        changeFile(u"rm \"$1\""_s);
        QTRY_COMPARE(accountField()->text(), QString());
        QCOMPARE(tokenField()->text(), QString());
        QCOMPARE(threshold(), u"15"_s);
        QVERIFY(!testButton()->isEnabled());
    }

    void theCursorStaysWhereItWas_data()
    {
        QTest::addColumn<int>("cursor");
        QTest::addColumn<QString>("newer");
        QTest::addColumn<int>("expected");
        QTest::newRow("amid the text") << 3 << u"act_987"_s << 3;
        QTest::newRow("at the beginning") << 0 << u"act_987"_s << 0;
        QTest::newRow("at the end") << 5 << u"act_987"_s << 7;
        QTest::newRow("behind what is left") << 4 << u"ac"_s << 2;
    }

    void theCursorStaysWhereItWas()
    {
        QFETCH(const int, cursor);
        QFETCH(const QString, newer);
        m_preferences->writeFile(stored);
        open();
        accountField()->setFocus();
        accountField()->setCursorPosition(cursor);
        m_preferences->write(u"adAccountId"_s, newer);
        QTRY_COMPARE(accountField()->text(), newer);
        QTEST(accountField()->cursorPosition(), "expected");
    }

    void aFieldWhoseValueStaysIsLeftAlone()
    {
        m_preferences->writeFile(stored);
        open();
        accountField()->setFocus();
        QTest::keyClick(accountField(), Qt::Key_End);
        QTest::keyClicks(accountField(), u"2"_s);
        accountField()->setSelection(1, 2);
        m_preferences->write(u"staleThresholdMinutes"_s, 25);
        QTRY_COMPARE(threshold(), u"25"_s);
        QCOMPARE(accountField()->selectedText(), u"ct"_s);
        QTest::keySequence(accountField(), QKeySequence::Undo);
        QCOMPARE(accountField()->text(), u"act_1"_s);
    }

    void whatIsTypedComesBackFromTheStoreAsNoChange()
    {
        m_preferences->writeFile(stored);
        open();
        accountField()->setFocus();
        accountField()->setCursorPosition(4);
        const QSignalSpy changes(accountField(), &QLineEdit::textChanged);
        QTest::keyClicks(accountField(), u"23"_s);
        m_preferences->write(u"staleThresholdMinutes"_s, 25); // seen after the two keystrokes
        QTRY_COMPARE(threshold(), u"25"_s);
        QCOMPARE(changes.size(), 2);
        QCOMPARE(accountField()->text(), u"act_231"_s);
        QCOMPARE(accountField()->cursorPosition(), 6);
    }

    void whatIsTypedGoesIntoANewerTextThatWasNotShownYet_data()
    {
        QTest::addColumn<QString>("keys");
        QTest::addColumn<int>("cursor");
        QTest::addColumn<QString>("expected");
        QTest::addColumn<int>("cursorAfter");
        QTest::newRow("at the end") << u"9"_s << 5 << u"act_777"_s + u"9"_s << 8;
        QTest::newRow("amid the text") << u"9"_s << 2 << u"ac9t_777"_s << 3;
        QTest::newRow("several keys") << u"98"_s << 0 << u"98act_777"_s << 2;
        QTest::newRow("the same character again") << u"c"_s << 2 << u"acct_777"_s << 3;
        QTest::newRow("nothing typed") << u"\b"_s << 5 << u"act_777"_s << 7;
    }

    void whatIsTypedGoesIntoANewerTextThatWasNotShownYet()
    {
        QFETCH(const QString, keys);
        QFETCH(const int, cursor);
        QFETCH(const QString, expected);
        m_preferences->writeFile(stored);
        open();
        accountField()->setFocus();
        accountField()->setCursorPosition(cursor);
        changeFile(u"sed -i s/act_1/act_777/ \"$1\""_s);
        for (const QChar key : keys)
            QTest::keyClick(accountField(), key == u'\b' ? '\b' : key.toLatin1());
        QCOMPARE(accountField()->text(), expected);
        QTEST(accountField()->cursorPosition(), "cursorAfter");
        QCOMPARE(m_preferences->stored(u"adAccountId"_s), expected);
        QCOMPARE(m_preferences->stored(u"accessToken"_s), u"EAold"_s);
    }

    void whatIsPastedOverAllGoesBehindANewerTextThatWasNotShownYet()
    {
        m_preferences->writeFile(stored);
        open();
        QApplication::clipboard()->setText(u"EApasted"_s);
        tokenField()->setFocus();
        tokenField()->selectAll();
        changeFile(u"sed -i s/EAold/XX/ \"$1\""_s);
        QTest::keySequence(tokenField(), QKeySequence::Paste);
        QVERIFY(tokenField()->text().startsWith(u"XX"_s));
        QVERIFY(tokenField()->text().endsWith(u"pasted"_s));
        QCOMPARE(m_preferences->stored(u"accessToken"_s), tokenField()->text());
    }

    void whatAnInputMethodHasBegunIsNotTakenAway_data()
    {
        QTest::addColumn<QString>("committed");
        QTest::addColumn<QString>("expected");
        QTest::newRow("and goes into the newer text") << u"九"_s << u"act_777九"_s;
        QTest::newRow("and when it is given up, the newer text appears") << u""_s << u"act_777"_s;
    }

    void whatAnInputMethodHasBegunIsNotTakenAway()
    {
        QFETCH(const QString, committed);
        m_preferences->writeFile(stored);
        open();
        accountField()->setFocus();
        QTest::keyClick(accountField(), Qt::Key_End);
        const QRect withoutIt = cursorIn(accountField());
        QInputMethodEvent composing(u"jiu"_s, {{QInputMethodEvent::Cursor, 3, 1}});
        QCoreApplication::sendEvent(accountField(), &composing);
        const QRect behindIt = cursorIn(accountField());
        changeFile(u"sed -i -e s/act_1/act_777/ -e s/=40/=25/ \"$1\""_s);
        QTRY_COMPARE(threshold(), u"25"_s);
        QCOMPARE(accountField()->text(), u"act_1"_s);
        QCOMPARE(cursorIn(accountField()), behindIt);
        QVERIFY(behindIt.x() > withoutIt.x());
        QInputMethodEvent end;
        end.setCommitString(committed);
        QCoreApplication::sendEvent(accountField(), &end);
        QFETCH(const QString, expected);
        QTRY_COMPARE(accountField()->text(), expected);
        QCOMPARE(m_preferences->stored(u"adAccountId"_s), accountField()->text());
    }

    void whatAnInputMethodLeftBehindHoldsNothingUp()
    {
        m_preferences->writeFile(stored);
        open();
        accountField()->setFocus();
        QInputMethodEvent composing(u"jiu"_s, {});
        QCoreApplication::sendEvent(accountField(), &composing);
        tokenField()->setFocus();
        m_preferences->write(u"adAccountId"_s, u"act_777"_s);
        QTRY_COMPARE(accountField()->text(), u"act_777"_s);
    }

    void aTestIsOfTheAccountOnTheScreen()
    {
        m_preferences->writeFile(stored);
        open();
        const qsizetype before = m_service->requestsWith("act_1/");
        changeFile(u"sed -i -e s/act_1/act_777/ -e s/EAold/EAnew/ \"$1\""_s);
        QTest::mouseClick(testButton(), Qt::LeftButton);
        QCOMPARE(accountField()->text(), u"act_777"_s);
        QCOMPARE(tokenField()->text(), u"EAnew"_s);
        QTRY_VERIFY(!success().isEmpty());
        QCOMPARE(m_service->requestsWith("act_1/"), before);
        QCOMPARE(m_service->requestsWith("access_token=EAnew"), 3); // the test's, and a refresh
    }

    void aStepFromANumberThatIsStoredNoMoreStoresNothing()
    {
        m_preferences->writeFile(stored);
        open();
        changeFile(u"sed -i s/=40/=25/ \"$1\""_s);
        QTest::mouseClick(stepperButton(u"Increase"_s), Qt::LeftButton);
        QCOMPARE(threshold(), u"25"_s);
        QCOMPARE(m_preferences->stored(u"staleThresholdMinutes"_s), u"25"_s);
        QTest::mouseClick(stepperButton(u"Increase"_s), Qt::LeftButton);
        QCOMPARE(threshold(), u"30"_s);
        QCOMPARE(m_preferences->stored(u"staleThresholdMinutes"_s), u"30"_s);
    }

    void whatIsStoredIsShownAsSoonAsTheUserComesToTheWindow()
    {
        m_preferences->writeFile(stored);
        open();
        QWidget other;
        other.show();
        other.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&other));
        changeFile(u"sed -i s/act_1/act_777/ \"$1\""_s);
        window()->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window()));
        QCoreApplication::processEvents();
        QCOMPARE(accountField()->text(), u"act_777"_s);
    }

    void nothingIsWatchedWhileNoWindowShowsIt()
    {
        m_preferences->writeFile(stored);
        open();
        QCOMPARE(kernelWatches(), 1);
        window()->close();
        QTRY_COMPARE(kernelWatches(), 0);
        reopen();
        QCOMPARE(kernelWatches(), 1);
    }

private:
    inline static const QByteArray stored =
        "[General]\naccessToken=EAold\nadAccountId=act_1\nstaleThresholdMinutes=40\n"_ba;

    /// Another program's doing; no event is handled meanwhile. "$1" is the file, "$2" a content.
    void changeFile(const QString &script, const QByteArray &content = {}) const
    {
        run(script, m_preferences->fileName(), content);
    }

    static void run(const QString &script, const QString &file, const QByteArray &content)
    {
        QProcess shell;
        shell.start(u"sh"_s, {u"-ec"_s, script, u"sh"_s, file, QString::fromLatin1(content)});
        QVERIFY(shell.waitForFinished() && shell.exitCode() == 0);
    }

    static QRect cursorIn(const QLineEdit *field) { return field->inputMethodQuery(Qt::ImCursorRectangle).toRect(); }

    /// Descriptors with which the kernel tells of changed files.
    static int kernelWatches()
    {
        int count = 0;
        const QStringList descriptors =
            QDir(u"/proc/self/fd"_s).entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System);
        for (const QString &descriptor : descriptors)
            count += QFile::symLinkTarget(u"/proc/self/fd/"_s + descriptor).contains(u"inotify"_s) ? 1 : 0;
        return count;
    }
};

QTEST_MAIN(StoredValuesTest)
#include "StoredValuesTest.moc"
