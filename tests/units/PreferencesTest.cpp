// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "PreferencesFixture.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTimer>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>

namespace {

int modeOf(const QString &path)
{
    struct stat status {};
    return ::stat(QFile::encodeName(path).constData(), &status) == 0 ? static_cast<int>(status.st_mode & 0777U) : -1;
}

mode_t currentMask()
{
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return mask;
}

/// The process's file creation mask while this lives.
class FileCreationMask {
public:
    explicit FileCreationMask(mode_t mask) : m_before(::umask(mask)) {}
    ~FileCreationMask() { ::umask(m_before); }
    Q_DISABLE_COPY_MOVE(FileCreationMask)

private:
    mode_t m_before;
};

/// No file can grow beyond 4 KiB while this lives: a full disk for this process alone, but for short outputs.
class FullDisk {
public:
    FullDisk()
    {
        std::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit none{.rlim_cur = 4096, .rlim_max = m_before.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &none);
    }
    ~FullDisk() { ::setrlimit(RLIMIT_FSIZE, &m_before); }
    Q_DISABLE_COPY_MOVE(FullDisk)

private:
    rlimit m_before{};
};

} // namespace

class PreferencesTest : public PreferencesFixture {
    Q_OBJECT

private Q_SLOTS:
    void anAbsentKeyReadsAsItsFallbackWhichIsNeverWritten()
    {
        QCOMPARE(text().get(), u"fallback"_s);
        QCOMPARE(integer().get(), 15);
        QCOMPARE(real().get(), 0.5);
        QCOMPARE(flag().get(), true);
        QVERIFY(!QFile::exists(m_preferences->fileName()));
    }

    void aWriteReachesTheFileAtOnce()
    {
        text().set(u"EAAB|äöü, \"quoted\"; %41 \\ end"_s);
        integer().set(std::numeric_limits<std::int64_t>::max());
        real().set(1700000000.123456);
        QCOMPARE(m_preferences->stored(u"text"_s).toString(), u"EAAB|äöü, \"quoted\"; %41 \\ end"_s);
        QCOMPARE(m_preferences->stored(u"integer"_s).toString(), u"9223372036854775807"_s);
        QCOMPARE(m_preferences->stored(u"real"_s).toString(), u"1700000000.123456"_s);
    }

    void whatIsWrittenIsReadByTheNextProcess()
    {
        text().set(u" a@b\tc "_s);
        integer().set(std::numeric_limits<std::int64_t>::min());
        real().set(0.1 + 0.2);
        m_store = std::make_unique<DefaultsStore>();
        QCOMPARE(text().get(), u" a@b\tc "_s);
        QCOMPARE(integer().get(), std::numeric_limits<std::int64_t>::min());
        QVERIFY(real().get() == 0.1 + 0.2);
    }

    void aValueWrittenByAnotherProgramIsSeenByTheNextRead()
    {
        QCOMPARE(text().get(), u"fallback"_s);
        m_preferences->write(u"text"_s, u"first"_s);
        QCOMPARE(text().get(), u"first"_s);
        m_preferences->write(u"text"_s, u"second"_s);
        QCOMPARE(text().get(), u"second"_s);
    }

    void writesOfATransactionReachTheFileTogetherAtItsEnd()
    {
        {
            const DefaultsStore::Transaction together(*m_store);
            integer().set(12345);
            QCOMPARE(integer().get(), 12345);
            real().set(0.25);
            QVERIFY(!QFile::exists(m_preferences->fileName()));
        }
        QCOMPARE(m_preferences->stored(u"integer"_s).toString(), u"12345"_s);
        QCOMPARE(m_preferences->stored(u"real"_s).toString(), u"0.25"_s);
    }

    void aTransactionSeesWhatAnotherProgramWroteBeforeIt()
    {
        QCOMPARE(text().get(), u"fallback"_s);
        m_preferences->writeFile("[General]\ntext=foreign\n");
        const DefaultsStore::Transaction together(*m_store);
        QCOMPARE(text().get(), u"foreign"_s);
    }

    void keysOfOtherProgramsAreKept()
    {
        m_preferences->write(u"foreign"_s, u"kept"_s);
        text().set(u"own"_s);
        QCOMPARE(m_preferences->stored(u"foreign"_s).toString(), u"kept"_s);
    }

    void anEmptyTextIsAValueOfItsOwn()
    {
        for (const QByteArray stored : {"", "\"\""}) {
            m_preferences->writeFile("[General]\ntext=" + stored + '\n');
            QCOMPARE(text().get(), u""_s);
        }
        text().set(u""_s);
        QCOMPARE(text().get(), u""_s);
    }

    void aValueOfAWrongKindReadsAsTheFallback_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::newRow("words for an integer") << "integer=soon"_ba;
        QTest::newRow("a fraction for an integer") << "integer=15.5"_ba;
        QTest::newRow("an integer beyond 64 bits") << "integer=9223372036854775808"_ba;
        QTest::newRow("nothing for an integer") << "integer="_ba;
        QTest::newRow("a list for an integer") << "integer=1, 2"_ba;
        QTest::newRow("bytes for an integer") << "integer=@ByteArray(20)"_ba;
        QTest::newRow("words for a real number") << "real=soon"_ba;
        QTest::newRow("a decimal comma for a real number") << "real=\"1,5\""_ba;
        QTest::newRow("a list for a real number") << "real=1, 2"_ba;
        QTest::newRow("words for a flag") << "flag=perhaps"_ba;
        QTest::newRow("a number for a flag") << "flag=2"_ba;
        QTest::newRow("a list for a text") << "text=a, b"_ba;
        QTest::newRow("quotes within a text") << "text=a\"b\""_ba;
        for (const QByteArray escape : {"\\q", "\\e", "\\1", "\\00", "\\07", "\\x", "\\x10041"})
            QTest::addRow("%s in a text", escape.constData()) << "text=" + escape;
        QTest::newRow("an unreadable object for a text") << "text=@Variant(\\0\\0)"_ba;
    }

    void aValueOfAWrongKindReadsAsTheFallback()
    {
        QFETCH(const QByteArray, line);
        m_preferences->writeFile("[General]\n" + line + '\n');
        QCOMPARE(text().get(), u"fallback"_s);
        QCOMPARE(integer().get(), 15);
        QCOMPARE(real().get(), 0.5);
        QCOMPARE(flag().get(), true);
    }

    void flagsAreReadAsProgramsWriteThem()
    {
        m_preferences->writeFile("[General]\nflag=false\n");
        QCOMPARE(flag().get(), false);
        m_preferences->writeFile("[General]\nflag=0 \n\n");
        QCOMPARE(flag().get(), false);
    }

    void theFileIsTheUsersAloneFromTheStart()
    {
        const FileCreationMask none(0);
        text().set(u"secret"_s);
        QCOMPARE(modeOf(m_preferences->fileName()), 0600);
        QCOMPARE(modeOf(QFileInfo(m_preferences->fileName()).path()), 0700);
    }

    void aFileFoundWiderIsTightenedByTheFirstRead()
    {
        m_preferences->write(u"text"_s, u"secret"_s);
        const QString folder = QFileInfo(m_preferences->fileName()).path();
        ::chmod(QFile::encodeName(m_preferences->fileName()).constData(), 0644);
        ::chmod(QFile::encodeName(folder).constData(), 0755);
        QCOMPARE(text().get(), u"secret"_s);
        QCOMPARE(modeOf(m_preferences->fileName()), 0600);
        QCOMPARE(modeOf(folder), 0700);
        text().set(u"new"_s);
        QCOMPARE(modeOf(m_preferences->fileName()), 0600);
    }

    void theUsersFileCreationMaskIsLeftAlone()
    {
        const FileCreationMask mask(027);
        text().set(u"secret"_s);
        QCOMPARE(currentMask(), mode_t{027});
    }

    void aStoreThatCannotBeWrittenIsToldOnceAndRemembersInMemory()
    {
        // A file stands where the folder would have to be.
        QFile obstacle(QFileInfo(m_preferences->fileName()).path());
        QVERIFY(obstacle.open(QIODevice::WriteOnly));
        OutputCapture output;
        text().set(u"kept"_s);
        integer().set(20);
        QCOMPARE(text().get(), u"kept"_s);
        QCOMPARE(integer().get(), 20);
        QCOMPARE(output.diagnostics(),
            "Vantelo: The preferences cannot be saved; changes last until the program ends.\n"_ba);
    }

    void aStoreThatCanBeWrittenAgainSavesEverythingAndTellsTheNextFailureAnew()
    {
        OutputCapture output;
        QVERIFY(QDir().mkpath(m_preferences->fileName())); // a folder in place of the file
        text().set(u"kept"_s);
        QVERIFY(QDir().rmdir(m_preferences->fileName()));
        integer().set(20);
        QCOMPARE(m_preferences->stored(u"text"_s).toString(), u"kept"_s);
        QVERIFY(QFile::remove(m_preferences->fileName()));
        QVERIFY(QDir().mkpath(m_preferences->fileName()));
        integer().set(21);
        QCOMPARE(output.diagnostics().count("cannot be saved"), 2);
    }

    void aFileThatCouldNotBeReadForAWhileIsNoFailureToWrite()
    {
        OutputCapture output;
        QVERIFY(QDir().mkpath(m_preferences->fileName()));
        QCOMPARE(text().get(), u"fallback"_s);
        QVERIFY(QDir().rmdir(m_preferences->fileName()));
        text().set(u"new"_s);
        QCOMPARE(m_preferences->stored(u"text"_s).toString(), u"new"_s);
        QCOMPARE(output.diagnostics(), ""_ba);
    }

    void aBrokenFileNeitherCrashesNorBlocksWriting()
    {
        m_preferences->writeFile("\0\xff]][[\nno equals sign\n=\n[General\ntext=lost"_ba);
        text().get();
        text().set(u"new"_s);
        m_store = std::make_unique<DefaultsStore>();
        QCOMPARE(text().get(), u"new"_s);
    }

    void linesThatCannotBeReadStayAndAreToldOnce()
    {
        m_preferences->writeFile("[General]\ntext=kept\nno equals sign\n\xff=1\n=1\na/b=1\ninteger=20\n"_ba);
        OutputCapture output;
        QCOMPARE(text().get(), u"kept"_s);
        QCOMPARE(integer().get(), 20);
        text().set(u"new"_s);
        QCOMPARE(integer().get(), 20);
        QCOMPARE(content(), "[General]\ninteger=20\ntext=new\nno equals sign\n\xff=1\n=1\na/b=1\n"_ba);
        QCOMPARE(output.diagnostics(),
            "Vantelo: Parts of the preference file cannot be read; they stay in it as they are.\n"_ba);
    }

    void valuesThatCannotBeReadStayUntilTheyAreReplaced()
    {
        m_preferences->writeFile("[General]\ninteger=\"20\nforeign=@Variant(\\0)\ntext=\xe4\n"_ba);
        QCOMPARE(text().get(), u"fallback"_s);
        QCOMPARE(integer().get(), 15);
        real().set(1.5);
        QCOMPARE(content(), "[General]\nforeign=@Variant(\\0)\ninteger=\"20\nreal=1.5\ntext=\xe4\n"_ba);
        text().set(u"new"_s);
        QCOMPARE(content(), "[General]\nforeign=@Variant(\\0)\ninteger=\"20\nreal=1.5\ntext=new\n"_ba);
    }

    void commentsStay()
    {
        m_preferences->writeFile("; by hand\n[General]\ntext=old\n[Window]\n;x=1\ny=2 ; two\n"_ba);
        OutputCapture output;
        text().set(u"new"_s);
        QCOMPARE(content(), "[General]\ntext=new\n\n[Window]\ny=2 ; two\n; by hand\n;x=1\n"_ba);
        QCOMPARE(output.diagnostics(), ""_ba);
    }

    void linesThatCannotBeReadStayInTheirOrder()
    {
        QByteArray lines;
        for (int i = 12; i > 0; --i)
            lines += "line " + QByteArray::number(i) + '\n';
        m_preferences->writeFile(lines);
        text().set(u"new"_s);
        QCOMPARE(content(), "[General]\ntext=new\n" + lines);
    }

    void aSectionWithoutItsHeaderIsNotTakenForTheOneBefore_data()
    {
        QTest::addColumn<QByteArray>("header");
        for (const QByteArray header : {"[Other", "[]", "[Other] x", "[Oth er]"})
            QTest::newRow(header.constData()) << header;
    }

    void aSectionWithoutItsHeaderIsNotTakenForTheOneBefore()
    {
        QFETCH(const QByteArray, header);
        m_preferences->writeFile("[General]\ntext=own\n" + header + "\ntext=foreign\n[Third]\nx=1\n");
        QCOMPARE(text().get(), u"own"_s);
        integer().set(20);
        QCOMPARE(content(), "[General]\ninteger=20\ntext=own\n\n[Third]\nx=1\n" + header + "\ntext=foreign\n");
        m_store = std::make_unique<DefaultsStore>();
        QCOMPARE(text().get(), u"own"_s);
    }

    void noTimeIsEndless()
    {
        for (const QByteArray value : {"nan", "inf", "-inf", "1e999"}) {
            m_preferences->writeFile("[General]\nreal=" + value + '\n');
            QCOMPARE(real().get(), 0.5);
        }
    }

    void aDirectoryInPlaceOfTheFileIsToldAndLeftAlone()
    {
        QVERIFY(QDir().mkpath(m_preferences->fileName()));
        OutputCapture output;
        text().set(u"kept"_s);
        QCOMPARE(text().get(), u"kept"_s);
        QVERIFY(QFileInfo(m_preferences->fileName()).isDir());
        QCOMPARE(output.diagnostics(),
            "Vantelo: The preferences cannot be saved; changes last until the program ends.\n"_ba);
    }

    void aLinkToTheFileIsFollowed()
    {
        const QTemporaryDir elsewhere;
        const QString target = elsewhere.filePath(u"target.conf"_s);
        text().set(u"old"_s);
        QVERIFY(QFile::rename(m_preferences->fileName(), target));
        QVERIFY(QFile::link(target, m_preferences->fileName()));
        ::chmod(QFile::encodeName(target).constData(), 0644);
        QCOMPARE(text().get(), u"old"_s);
        text().set(u"new"_s);
        QCOMPARE(QFileInfo(m_preferences->fileName()).symLinkTarget(), target);
        QVERIFY(content().contains("text=new"));
        QCOMPARE(modeOf(target), 0600);
    }

    void aLinkToAFileThatIsYetToBeMadeIsFollowed()
    {
        const QTemporaryDir elsewhere;
        const QString target = elsewhere.filePath(u"target.conf"_s);
        QDir().mkpath(QFileInfo(m_preferences->fileName()).path());
        QVERIFY(QFile::link(target, m_preferences->fileName()));
        text().set(u"new"_s);
        QCOMPARE(QFileInfo(m_preferences->fileName()).symLinkTarget(), target);
        QVERIFY(content().contains("text=new"));
    }

    void aLinkThatLeadsInCirclesIsToldAndLeftAlone()
    {
        QDir().mkpath(QFileInfo(m_preferences->fileName()).path());
        QVERIFY(QFile::link(m_preferences->fileName(), m_preferences->fileName()));
        OutputCapture output;
        text().set(u"kept"_s);
        QCOMPARE(text().get(), u"kept"_s);
        QVERIFY(QFileInfo(m_preferences->fileName()).isSymLink());
        QCOMPARE(output.diagnostics(),
            "Vantelo: The preferences cannot be saved; changes last until the program ends.\n"_ba);
    }

    void aChangeIsToldOnce()
    {
        text().set(u"old"_s);
        int told = 0;
        const auto watch = m_store->watch([&] { ++told; });
        m_preferences->writeFile("[General]\ntext=new\n");
        QTRY_COMPARE(told, 1);
        QTest::qWait(250);
        QCOMPARE(told, 1);
    }

    void aFileThatIsChangedAllTheTimeIsToldMeanwhile()
    {
        text().set(u"old"_s);
        int told = 0;
        const auto watch = m_store->watch([&] { ++told; });
        QTimer writes;
        writes.callOnTimeout([this] { m_preferences->writeFile("[General]\ntext=new\n"); });
        writes.start(10);
        QTRY_VERIFY_WITH_TIMEOUT(told > 0, 2000);
    }

    void aFullDiskIsToldAndLosesNothing_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("a whole file") << "[General]\ntext=old\n"_ba;
        QTest::newRow("a damaged file") << "[General\n" + QByteArray(5000, 'x') + "\n[General]\ntext=old\n";
    }

    void aFullDiskIsToldAndLosesNothing()
    {
        QFETCH(const QByteArray, content);
        m_preferences->writeFile(content);
        const QString longText(5000, u'y');
        OutputCapture output;
        {
            const FullDisk disk;
            QCOMPARE(text().get(), u"old"_s);
            text().set(longText);
            QCOMPARE(text().get(), longText);
        }
        QCOMPARE(this->content(), content);
        const QFileInfo file(m_preferences->fileName());
        QCOMPARE(QDir(file.path()).entryList(QDir::Files), QStringList{file.fileName()});
        QVERIFY(output.diagnostics().endsWith(
            "Vantelo: The preferences cannot be saved; changes last until the program ends.\n"));
    }
};

QTEST_GUILESS_MAIN(PreferencesTest)
#include "PreferencesTest.moc"
