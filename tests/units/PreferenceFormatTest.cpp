// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "PreferencesFixture.h"

/// What the preference file says, and what other programs make of it.
class PreferenceFormatTest : public PreferencesFixture {
    Q_OBJECT

private Q_SLOTS:
    void noValueMakesAnObject_data()
    {
        QTest::addColumn<QByteArray>("value");
        const QByteArray number = "Variant(\\0\\0\\0\\x2\\0\\0\\0\\0\\x5)"_ba;
        QTest::newRow("a number") << "@" + number;
        QTest::newRow("a list that would fill the memory") << "@Variant(\\0\\0\\0\\t\\0\\xff\\xff\\xff\\xff)"_ba;
        QTest::newRow("a date") << "@DateTime(\\0\\0\\0\\x10\\0)"_ba;
        QTest::newRow("in quotes") << "\"@" + number + '"';
        QTest::newRow("in parts") << "\"@V\"\"ariant(\\0)\""_ba;
        QTest::newRow("with escapes") << "\\x40" + number;
        QTest::newRow("with octal escapes") << "\\100" + number;
        QTest::newRow("behind an unknown escape") << "\\q@" + number;
        QTest::newRow("behind a byte order mark") << "\xEF\xBB\xBF@" + number;
        QTest::newRow("behind half a character") << "\"\xE4\"@" + number;
        QTest::newRow("in a list") << "1, @" + number;
    }

    void noValueMakesAnObject()
    {
        QFETCH(const QByteArray, value);
        m_preferences->writeFile("[General]\ntext=" + value + "\ninteger=20\n");
        const QVariant read = m_store->value(u"text"_s);
        QVERIFY(!read.isValid() || read.typeId() == QMetaType::QString);
        QCOMPARE(integer().get(), 20);
    }

    void whatPeopleAndOtherProgramsWriteIsRead_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("comments and blanks") << "; by hand\n\n \t[General] \t; here\n \ttext \t= \town ; the text\n"_ba;
        QTest::newRow("blanks at the end") << "[General]\ntext=own \t \t\n"_ba;
        QTest::newRow("lines of another system") << "[General]\r\ntext=own\r\n"_ba;
        QTest::newRow("a byte order mark") << "\xEF\xBB\xBF[General]\ntext=own\n"_ba;
        QTest::newRow("a byte order mark alone") << "\xEF\xBB\xBFtext=own\n"_ba;
        QTest::newRow("values of other kinds")
            << "[General]\nbytes=@ByteArray(\\x1\\xff)\nlist=1, \"a, b\"\nnone=@Invalid()\ntext=own\n"_ba;
        QTest::newRow("names of other kinds")
            << "[A%20b.c-d]\ne\\f%5B.g-h=1\n[%General]\nx=1\n[General]\ntext=own\n"_ba;
        QTest::newRow("quotes") << "[General]\ntext = \"own\" \t; the text\n"_ba;
        QTest::newRow("the section in small letters") << "[general]\ntext=own\n"_ba;
        QTest::newRow("no section") << "text=own\n"_ba;
        QTest::newRow("a long line") << "[General]\nlong=" + QByteArray(1'000'000, 'x') + "\ntext=own\n";
    }

    void whatPeopleAndOtherProgramsWriteIsRead()
    {
        QFETCH(const QByteArray, content);
        m_preferences->writeFile(content);
        OutputCapture output;
        QCOMPARE(text().get(), u"own"_s);
        QCOMPARE(output.diagnostics(), ""_ba);
    }

    void escapesAreReadAsOtherProgramsReadThem_data()
    {
        QTest::addColumn<QByteArray>("stored");
        for (const QByteArray stored :
            {"\\x41", "\\x3a9", "\\xD83D\\xDFE2", "\\xd83d\\xdfe2 ", "\\x41g", "\\0", "\\0a", "\\08"})
            QTest::newRow(stored.constData()) << stored;
    }

    void escapesAreReadAsOtherProgramsReadThem()
    {
        QFETCH(const QByteArray, stored);
        m_preferences->writeFile("[General]\ntext=" + stored + '\n');
        QCOMPARE(text().get(), m_preferences->stored(u"text"_s).toString());
    }

    void everyTextCanBeReadAgain_data()
    {
        QTest::addColumn<QString>("value");
        QTest::newRow("an object's beginning") << u"@Variant(\0\0)"_s;
        QTest::newRow("what looks like an object") << u"@Variant(x)"_s;
        QTest::newRow("an at sign") << u"@home"_s;
        QTest::newRow("an object amid a text") << u"a=1, @Variant(x); b"_s;
        QTest::newRow("control characters") << u"\1\x1f"
                                               "f\0"
                                               "0\x7f\u00e4\u0080"_s;
        QTest::newRow("quotes and escapes") << u"\"\\\"'\\x40@\\"_s;
        QTest::newRow("quotes and escapes within quotes") << u"a\"; \\b\\"_s;
        QTest::newRow("every short escape") << u"\a\b\f\n\r\t\v\"\\"_s;
        QTest::newRow("a section") << u"[General]\naccessToken=x\r\n"_s;
        QTest::newRow("an emoji") << u"🟢 @ Ω"_s;
    }

    void everyTextCanBeReadAgain()
    {
        QFETCH(const QString, value);
        text().set(value);
        QCOMPARE(m_preferences->stored(u"text"_s).toString(), value);
        m_store.reset();
        m_preferences->write(u"foreign"_s, value);
        m_store = std::make_unique<DefaultsStore>();
        QCOMPARE(text().get(), value);
        QCOMPARE(m_store->value(u"foreign"_s).toString(), value);
    }

    void aByteOrderMarkBelongsToItsText()
    {
        text().set(u"\uFEFFown"_s);
        QCOMPARE(text().get(), u"\uFEFFown"_s);
    }

    void aTextIsWrittenAsOtherProgramsWriteIt_data()
    {
        QTest::addColumn<QString>("value");
        for (const QString &value : {u"a b"_s, u" a"_s, u"a "_s, u"a,b"_s, u"a;b"_s, u"a=b"_s, u"@a"_s, u"a@"_s, u"~"_s,
                 u"\x1f"_s, u"\x7f"_s, u"1a"_s, u"\n1"_s, u"\a\b\f\n\r\t\v\"\\"_s})
            QTest::newRow(value.toUtf8().toPercentEncoding().constData()) << value;
        for (const QChar next : u"/09:@AFG`afg"_s)
            QTest::addRow("%c after an escape", next.toLatin1()) << u'\x1' + QString(next);
    }

    void aTextIsWrittenAsOtherProgramsWriteIt()
    {
        QFETCH(const QString, value);
        text().set(value);
        const QByteArray own = content();
        QVERIFY(QFile::remove(m_preferences->fileName()));
        m_preferences->write(u"text"_s, value);
        QCOMPARE(own, content());
    }

    void anAtSignAloneMakesNoObject()
    {
        m_preferences->writeFile("[General]\ntext=@home\n");
        QCOMPARE(text().get(), u"@home"_s);
    }
};

QTEST_GUILESS_MAIN(PreferenceFormatTest)
#include "PreferenceFormatTest.moc"
