// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Contrast.h"
#include "SettingsFixture.h"

#include <QClipboard>

/// The two fields of the form: what is typed is stored, and nobody reads the token.
class CredentialFieldsTest : public SettingsFixture {
    Q_OBJECT

private Q_SLOTS:
    void storedPreferencesFillTheForm()
    {
        m_preferences->write(u"accessToken"_s, u" EAstored "_s);
        m_preferences->write(u"adAccountId"_s, u"123 "_s);
        m_preferences->write(u"staleThresholdMinutes"_s, 40);
        open();
        QCOMPARE(tokenField()->text(), u" EAstored "_s);
        QCOMPARE(accountField()->text(), u"123 "_s);
        QCOMPARE(threshold(), u"40"_s);
    }

    void placeholdersAreReadableWhateverThePalette()
    {
        QPalette dark = WindowTree::darkPalette();
        dark.setColor(QPalette::Base, QColor(0x1b, 0x1e, 0x20));
        dark.setColor(QPalette::PlaceholderText, Qt::black); // as Qt has it on a dark Plasma
        open();
        for (const QPalette &palette : {QPalette(QColor(0xef, 0xef, 0xef)), dark}) {
            const WindowTree::SystemPalette whileLooking(palette); // with the window open
            for (const QLineEdit *field : {tokenField(), accountField()}) {
                QTRY_COMPARE(field->palette().color(QPalette::Base), palette.color(QPalette::Base));
                const QPalette seen = field->palette();
                QVERIFY(contrast(seen.color(QPalette::PlaceholderText), seen.color(QPalette::Base)) >= 4.5);
            }
        }
    }

    void everyKeystrokeIsStoredAtOnce()
    {
        open();
        QTest::keyClicks(tokenField(), u"E"_s);
        QCOMPARE(m_preferences->stored(u"accessToken"_s), u"E"_s);
        QTest::keyClicks(tokenField(), u"A"_s);
        QCOMPARE(m_preferences->stored(u"accessToken"_s), u"EA"_s);
        QTest::keyClick(tokenField(), Qt::Key_Backspace);
        QCOMPARE(m_preferences->stored(u"accessToken"_s), u"E"_s);
        QTest::keyClicks(accountField(), u"7"_s);
        QCOMPARE(m_preferences->stored(u"adAccountId"_s), u"7"_s);
        QTest::keyClick(accountField(), Qt::Key_Backspace);
        QCOMPARE(m_preferences->stored(u"adAccountId"_s), u""_s);
    }

    void textIsKeptExactlyAsTyped_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("blanks around") << u"  act_1 "_s;
        QTest::newRow("one blank") << u" "_s;
        QTest::newRow("no prefix") << u"123456789"_s;
        QTest::newRow("capital prefix") << u"ACT_1"_s;
        QTest::newRow("no number at all") << u"abc & <b>d</b>"_s;
    }

    void textIsKeptExactlyAsTyped()
    {
        QFETCH(const QString, text);
        open();
        QTest::keyClicks(tokenField(), text);
        QTest::keyClicks(accountField(), text);
        QTest::keyClick(accountField(), Qt::Key_Return);
        QCOMPARE(tokenField()->text(), text);
        QCOMPARE(accountField()->text(), text);
        QCOMPARE(m_preferences->stored(u"accessToken"_s), text);
        QCOMPARE(m_preferences->stored(u"adAccountId"_s), text);
    }

    void pastedTextIsStoredAtOnce()
    {
        open();
        const QString longToken = u"EA"_s + QString(40'000, u'x');
        QApplication::clipboard()->setText(longToken);
        QTest::keySequence(tokenField(), QKeySequence::Paste);
        QCOMPARE(m_preferences->stored(u"accessToken"_s), longToken);
        QTest::keySequence(tokenField(), QKeySequence::Undo);
        QCOMPARE(m_preferences->stored(u"accessToken"_s), tokenField()->text());
    }

    void openingTheFormWritesNothing_data()
    {
        QTest::addColumn<QVariant>("token");
        QTest::addColumn<QVariant>("accountId");
        QTest::addColumn<QVariant>("threshold");
        QTest::newRow("nothing stored") << QVariant() << QVariant() << QVariant();
        QTest::newRow("blanks, and more than the stepper gives")
            << QVariant(u" EA "_s) << QVariant(u"42 "_s) << QVariant(u"500"_s);
        QTest::newRow("empty, no prefix, and less than the stepper gives")
            << QVariant(u""_s) << QVariant(u"42"_s) << QVariant(u"-5"_s);
        QTest::newRow("between two steps") << QVariant(u"EA"_s) << QVariant(u"act_"_s) << QVariant(u"17"_s);
        QTest::newRow("no number") << QVariant(u"EA"_s) << QVariant(u"ACT_1"_s) << QVariant(u"soon"_s);
    }

    void openingTheFormWritesNothing()
    {
        const QStringList keys{u"accessToken"_s, u"adAccountId"_s, u"staleThresholdMinutes"_s};
        QFETCH(const QVariant, token);
        QFETCH(const QVariant, accountId);
        QFETCH(const QVariant, threshold);
        const QVariantList before{token, accountId, threshold};
        for (qsizetype i = 0; i < keys.size(); ++i) {
            if (before[i].isValid())
                m_preferences->write(keys[i], before[i]);
        }
        open();
        window()->close();
        for (qsizetype i = 0; i < keys.size(); ++i)
            QCOMPARE(m_preferences->stored(keys[i]), before[i]);
    }

    void closingTheWindowKeepsTheEdit()
    {
        open();
        QTest::keyClicks(tokenField(), u"EAnew"_s);
        QTest::keyClicks(accountField(), u"42"_s);
        window()->close();
        QCOMPARE(m_state->accessToken(), u"EAnew"_s);
        QCOMPARE(m_state->adAccountId(), u"42"_s);
    }

    void theCursorStaysWhereTheUserPutItWhenTheStateChanges()
    {
        openWithCredentials();
        accountField()->setFocus();
        accountField()->setCursorPosition(2);
        accountField()->setSelection(1, 2);
        Task::start(m_state->refresh());
        QTRY_COMPARE(Task::running(), 0);
        QCOMPARE(accountField()->text(), u"act_1"_s);
        QCOMPARE(accountField()->selectedText(), u"ct"_s);
        QTest::keyClicks(accountField(), u"X"_s);
        QCOMPARE(m_state->adAccountId(), u"aX_1"_s);
    }

    void aValueChangedElsewhereAppearsWhenTheWindowIsOpenedAnew()
    {
        open();
        m_preferences->write(u"adAccountId"_s, u"from elsewhere"_s);
        m_preferences->write(u"staleThresholdMinutes"_s, 25);
        reopen();
        QCOMPARE(accountField()->text(), u"from elsewhere"_s);
        QCOMPARE(threshold(), u"25"_s);
    }

    void theTokenIsMasked()
    {
        open();
        QTest::keyClicks(tokenField(), u"EAsecret"_s);
        QCOMPARE(tokenField()->echoMode(), QLineEdit::Password);
        QVERIFY(!tokenField()->displayText().contains(u"EA"_s));
        QVERIFY(tokenField()->inputMethodHints().testFlags(
            Qt::ImhSensitiveData | Qt::ImhHiddenText | Qt::ImhNoPredictiveText));
        for (const auto query :
            {Qt::ImSurroundingText, Qt::ImTextBeforeCursor, Qt::ImTextAfterCursor, Qt::ImCurrentSelection})
            QCOMPARE(tokenField()->inputMethodQuery(query).toString(), QString());
        QCOMPARE(accountField()->echoMode(), QLineEdit::Normal);
    }

    void theTokenIsNotInTheAccessibilityTree()
    {
        open();
        QTest::keyClicks(tokenField(), u"EAsecret"_s);
        for (QAccessibleInterface *node : WindowTree::nodes(window())) {
            for (int kind = QAccessible::Name; kind <= QAccessible::Accelerator; ++kind)
                QVERIFY(!node->text(static_cast<QAccessible::Text>(kind)).contains(u"secret"_s));
            if (const auto *text = node->textInterface())
                QVERIFY(!text->text(0, text->characterCount()).contains(u"secret"_s));
        }
        // Without a text interface there is nothing that could announce typed characters to the desktop.
        QVERIFY(!WindowTree::accessible(tokenField())->textInterface());
        QVERIFY(WindowTree::accessible(accountField())->textInterface());
    }

    void theTokenCannotBeCopied()
    {
        open();
        QTest::keyClicks(tokenField(), u"EAsecret"_s);
        QApplication::clipboard()->setText(u"before"_s);
        tokenField()->selectAll();
        QTest::keySequence(tokenField(), QKeySequence::Copy);
        QTest::keySequence(tokenField(), QKeySequence::Cut);
        QCOMPARE(QApplication::clipboard()->text(), u"before"_s);
        QCOMPARE(tokenField()->text(), u"EAsecret"_s);
    }
};

QTEST_MAIN(CredentialFieldsTest)
#include "CredentialFieldsTest.moc"
