// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "OutputCapture.h"
#include "Platform/AppStorage.h"
#include "TestPreferences.h"

#include <QFile>
#include <QFileInfo>
#include <QTest>

#include <memory>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

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

} // namespace

class PreferencesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_preferences = std::make_unique<TestPreferences>();
        m_store = std::make_unique<DefaultsStore>();
    }

    void cleanup()
    {
        m_store.reset();
        m_preferences.reset();
        ::umask(022);
    }

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

    void keysOfOtherProgramsAreKept()
    {
        m_preferences->write(u"foreign"_s, u"kept"_s);
        text().set(u"own"_s);
        QCOMPARE(m_preferences->stored(u"foreign"_s).toString(), u"kept"_s);
    }

    void anEmptyTextIsAValueOfItsOwn()
    {
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
        ::umask(0);
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
        ::umask(027);
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

    void aBrokenFileNeitherCrashesNorBlocksWriting()
    {
        m_preferences->writeFile("\0\xff]][[\nno equals sign\n=\n[General\ntext=lost"_ba);
        text().get();
        text().set(u"new"_s);
        QCOMPARE(text().get(), u"new"_s);
        QCOMPARE(m_preferences->stored(u"text"_s).toString(), u"new"_s);
    }

private:
    AppStorage<QString> text() { return {*m_store, u"text"_s, u"fallback"_s}; }
    AppStorage<std::int64_t> integer() { return {*m_store, u"integer"_s, 15}; }
    AppStorage<double> real() { return {*m_store, u"real"_s, 0.5}; }
    AppStorage<bool> flag() { return {*m_store, u"flag"_s, true}; }

    std::unique_ptr<TestPreferences> m_preferences;
    std::unique_ptr<DefaultsStore> m_store;
};

QTEST_GUILESS_MAIN(PreferencesTest)
#include "PreferencesTest.moc"
