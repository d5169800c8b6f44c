// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Preferences/Linux/FileLock.h"
#include "PreferencesFixture.h"

#include <QDateTime>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QLockFile>

#include <sys/stat.h>

/// Other programs that write the preference file, and what killed ones left beside it.
class PreferenceLockTest : public PreferencesFixture {
    Q_OBJECT

private Q_SLOTS:
    void anAbandonedLockHoldsNothingUp_data()
    {
        QTest::addColumn<QByteArray>("lock");
        QTest::addColumn<qint64>("age");
        QTest::newRow("empty") << ""_ba << qint64{1};
        QTest::newRow("empty, before the clock was set back") << ""_ba << qint64{-3600};
        QTest::newRow("of a process that is gone") << "4194305\nvantelo\n"_ba + hostName() + '\n' << qint64{0};
        QTest::newRow("of a process whose number another one has") << "1\nvantelo\n"_ba + hostName() + '\n'
                                                                   << qint64{0};
        QTest::newRow("of this machine by another name") << "1\nvantelo\nelsewhere\n"_ba << qint64{0};
        QTest::newRow("of no meaning") << "\0\0\0\0"_ba << qint64{0};
    }

    void anAbandonedLockHoldsNothingUp()
    {
        QFETCH(const QByteArray, lock);
        QFETCH(const qint64, age);
        m_preferences->writeFile("[General]\ntext=old\n");
        leaveLock(lock, age);
        OutputCapture output;
        text().set(u"new"_s);
        QCOMPARE(content(), "[General]\ntext=new\n"_ba);
        QCOMPARE(namesBeside(), QStringList());
        QCOMPARE(output.diagnostics(), ""_ba);
    }

    void aLockThatIsJustBeingMadeIsRespectedForAMoment()
    {
        m_preferences->writeFile("[General]\ntext=old\n");
        leaveLock({}, 0);
        OutputCapture output;
        text().set(u"new"_s);
        QCOMPARE(text().get(), u"new"_s);
        QCOMPARE(content(), "[General]\ntext=old\n"_ba);
        QTRY_COMPARE_WITH_TIMEOUT(content(), "[General]\ntext=new\n"_ba, 1000);
        QCOMPARE(output.diagnostics(), ""_ba);
    }

    void aWriteFollowsThatOfAnotherProgram()
    {
        m_preferences->writeFile("[General]\ntext=old\n");
        QLockFile theirs(lockName());
        QVERIFY(theirs.lock());
        OutputCapture output;
        text().set(u"new"_s);
        m_preferences->writeFile("[General]\ninteger=20\ntext=old\n");
        QTest::qWait(200); // they take their time
        QCOMPARE(content(), "[General]\ninteger=20\ntext=old\n"_ba);
        theirs.unlock();
        QTRY_COMPARE_WITH_TIMEOUT(content(), "[General]\ninteger=20\ntext=new\n"_ba, 500);
        QCOMPARE(output.diagnostics(), ""_ba);
    }

    void aLockThatIsNeverReleasedIsToldAfterASecondAndRespected()
    {
        m_preferences->writeFile("[General]\ntext=old\n");
        QLockFile theirs(lockName());
        theirs.setStaleLockTime(0);
        QVERIFY(theirs.lock());
        OutputCapture output;
        QElapsedTimer sinceTheWrite;
        sinceTheWrite.start();
        text().set(u"new"_s);
        QTRY_VERIFY_WITH_TIMEOUT(output.diagnostics().contains("cannot be saved"), 1500);
        QVERIFY(sinceTheWrite.elapsed() >= 900);
        QCOMPARE(content(), "[General]\ntext=old\n"_ba);
        QCOMPARE(text().get(), u"new"_s);
        theirs.unlock();
        integer().set(20);
        QCOMPARE(content(), "[General]\ninteger=20\ntext=new\n"_ba);
        QCOMPARE(output.diagnostics(),
            "Vantelo: The preferences cannot be saved; changes last until the program ends.\n"_ba);
    }

    void nobodyWaitsForALock()
    {
        QDir().mkpath(QFileInfo(m_preferences->fileName()).path());
        QLockFile theirs(lockName());
        QVERIFY(theirs.lock());
        QElapsedTimer time;
        time.start();
        for (int i = 0; i < 20; ++i) {
            integer().set(i);
            QCOMPARE(integer().get(), i);
        }
        m_store.reset();
        QVERIFY(time.elapsed() < 500);
    }

    void theProgramsEndIsTheLastTry()
    {
        QDir().mkpath(QFileInfo(m_preferences->fileName()).path());
        QLockFile theirs(lockName());
        QVERIFY(theirs.lock());
        text().set(u"new"_s);
        theirs.unlock();
        m_store.reset();
        QCOMPARE(content(), "[General]\ntext=new\n"_ba);
    }

    void othersFindOurLock_data()
    {
        QTest::addColumn<QByteArray>("leftOver");
        QTest::newRow("a new one") << QByteArray();
        QTest::newRow("one taken over") << "4194305\nvantelo\n"_ba + hostName() + "\n"_ba + QByteArray(500, 'x');
    }

    void othersFindOurLock()
    {
        QFETCH(const QByteArray, leftOver);
        QDir().mkpath(QFileInfo(m_preferences->fileName()).path());
        if (!leftOver.isEmpty())
            leaveLock(leftOver, 0);
        {
            const FileLock ours(lockName());
            QLockFile theirs(lockName());
            theirs.setStaleLockTime(1);
            QVERIFY(!theirs.tryLock(50));
            qint64 process = 0;
            QString machine;
            QString program;
            QVERIFY(theirs.getLockInfo(&process, &machine, &program));
            QCOMPARE(process, QCoreApplication::applicationPid());
            QCOMPARE(machine, QSysInfo::machineHostName());
            QFile file(lockName());
            QVERIFY(file.open(QIODevice::ReadOnly) && file.readAll().endsWith('\n' + hostName() + '\n'));
            QCOMPARE(QFileInfo(program).fileName(), u"PreferenceLockTest"_s);
        }
        QVERIFY(QLockFile(lockName()).tryLock());
    }

    void aLockIsTheUsersAlone()
    {
        QDir().mkpath(QFileInfo(m_preferences->fileName()).path());
        const mode_t before = ::umask(0);
        const FileLock lock(lockName());
        ::umask(before);
        QCOMPARE(QFile::permissions(lockName()) & ~(QFile::ReadUser | QFile::WriteUser),
            QFile::ReadOwner | QFile::WriteOwner);
    }

    void whatAKilledProgramHadBegunToWriteGoesWithTheNextWrite()
    {
        m_preferences->writeFile("[General]\ntext=old\n");
        QVERIFY(QFile::copy(m_preferences->fileName(), m_preferences->fileName() + u".new"_s));
        text().set(u"new"_s);
        QCOMPARE(content(), "[General]\ntext=new\n"_ba);
        QCOMPARE(namesBeside(), QStringList());
    }

    void nothingStaysOpen()
    {
        m_preferences->writeFile("[General]\ntext=old\n");
        const auto openFiles = [] { return QDir(u"/proc/self/fd"_s).entryList(QDir::Files | QDir::System).size(); };
        const auto before = openFiles();
        text().set(u"new"_s);
        leaveLock("4194305\nvantelo\n"_ba + hostName() + '\n', 0);
        text().set(u"newer"_s);
        QCOMPARE(text().get(), u"newer"_s);
        QCOMPARE(openFiles(), before);
        QLockFile theirs(lockName());
        QVERIFY(theirs.lock());
        integer().set(20);
        theirs.unlock();
        QTRY_VERIFY(content().contains("integer=20"));
        QCOMPARE(openFiles(), before);
    }

    void aPipeInPlaceOfTheFileIsNotWaitedFor()
    {
        QDir().mkpath(QFileInfo(m_preferences->fileName()).path());
        QCOMPARE(::mkfifo(QFile::encodeName(m_preferences->fileName()).constData(), 0600), 0);
        OutputCapture output;
        text().set(u"kept"_s);
        QCOMPARE(text().get(), u"kept"_s);
        QVERIFY(output.diagnostics().contains("cannot be saved"));
    }

private:
    static QByteArray hostName() { return QSysInfo::machineHostName().toUtf8(); }

    QString lockName() const { return m_preferences->fileName() + u".lock"_s; }

    /// As a killed program leaves it; its age in seconds.
    void leaveLock(const QByteArray &content, qint64 age) const
    {
        QFile lock(lockName());
        QVERIFY(lock.open(QIODevice::WriteOnly));
        QCOMPARE(lock.write(content), content.size());
        QVERIFY(lock.flush());
        QVERIFY(lock.setFileTime(QDateTime::currentDateTime().addSecs(-age), QFile::FileModificationTime));
    }

    QStringList namesBeside() const
    {
        const QFileInfo file(m_preferences->fileName());
        QStringList names = QDir(file.path()).entryList(QDir::Files);
        names.removeAll(file.fileName());
        return names;
    }
};

QTEST_GUILESS_MAIN(PreferenceLockTest)
#include "PreferenceLockTest.moc"
