// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Process/macOS/InstanceLock.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <memory>
#include <optional>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

/// Another process that holds the lock until it is killed.
class Holder {
public:
    explicit Holder(const QString &path)
    {
        int ends[2];
        if (::pipe(ends) != 0)
            qFatal("no pipe");
        m_process = ::fork();
        if (m_process == 0) {
            const InstanceLock lock(path);
            const char held = lock.otherHolder() ? 'n' : 'y';
            [[maybe_unused]] const auto written = ::write(ends[1], &held, 1);
            ::pause();
        }
        char held = 'n';
        if (::read(ends[0], &held, 1) != 1 || held != 'y')
            qFatal("the other process has no lock");
        ::close(ends[0]);
        ::close(ends[1]);
    }
    ~Holder()
    {
        ::kill(m_process, SIGKILL);
        ::waitpid(m_process, nullptr, 0);
    }
    Q_DISABLE_COPY_MOVE(Holder)

    qint64 process() const { return m_process; }

private:
    pid_t m_process = -1;
};

} // namespace

/// The lock that keeps a copy of the program on macOS from being a second one.
class InstanceLockTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void theFirstHoldsIt() { QVERIFY(!InstanceLock(path()).otherHolder()); }

    void theSecondLearnsWhoHoldsIt()
    {
        const Holder first(path());
        QCOMPARE(InstanceLock(path()).otherHolder(), std::optional(first.process()));
        QCOMPARE(InstanceLock(path()).otherHolder(), std::optional(first.process())); // and changes nothing
    }

    void aProcessThatWasKilledHoldsNothing()
    {
        {
            const Holder killed(path());
        }
        QVERIFY(!InstanceLock(path()).otherHolder());
    }

    void itIsFreeAgainAtTheEnd()
    {
        {
            const InstanceLock first(path());
        }
        QVERIFY(!InstanceLock(path()).otherHolder());
    }

    void aProgramThatWasStartedHoldsNothing()
    {
        pid_t browser = -1;
        {
            const InstanceLock first(path());
            browser = ::fork();
            if (browser == 0)
                ::execl("/bin/sleep", "sleep", "60", nullptr);
            // Until then it has what its parent has.
            QTRY_COMPARE(nameOf(browser), "sleep"_ba);
        }
        const bool held = InstanceLock(path()).otherHolder().has_value();
        ::kill(browser, SIGKILL);
        ::waitpid(browser, nullptr, 0);
        QVERIFY(!held);
    }

    void aHolderThatDoesNotSayWhoItIsHoldsItAllTheSame()
    {
        const Holder first(path());
        QFile(path()).resize(0);
        QCOMPARE(InstanceLock(path()).otherHolder(), std::optional(qint64{0}));
    }

    void whereNoLockCanBeTheProgramRuns() { QVERIFY(!InstanceLock(m_folder->filePath(u"no/folder"_s)).otherHolder()); }

    void itsFileIsTheUsersAlone()
    {
        const InstanceLock first(path());
        QCOMPARE(
            QFile::permissions(path()) & (QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther),
            QFile::Permissions());
    }

private:
    QString path() const { return m_folder->filePath(u"lock"_s); }

    static QByteArray nameOf(pid_t process)
    {
        QFile file(u"/proc/%1/comm"_s.arg(process));
        return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed() : QByteArray();
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

QTEST_GUILESS_MAIN(InstanceLockTest)
#include "InstanceLockTest.moc"
