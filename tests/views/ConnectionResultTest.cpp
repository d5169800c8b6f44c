// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "SettingsFixture.h"

/// The form's connection test, from the button to its result.
class ConnectionResultTest : public SettingsFixture {
    Q_OBJECT

private Q_SLOTS:
    void theTestButtonNeedsBothCredentials_data()
    {
        QTest::addColumn<QString>("token");
        QTest::addColumn<QString>("accountId");
        QTest::addColumn<bool>("enabled");
        QTest::newRow("both empty") << u""_s << u""_s << false;
        QTest::newRow("no account") << u"EA"_s << u""_s << false;
        QTest::newRow("no token") << u""_s << u"1"_s << false;
        QTest::newRow("both") << u"EA"_s << u"1"_s << true;
        QTest::newRow("a blank counts") << u" "_s << u" "_s << true;
    }

    void theTestButtonNeedsBothCredentials()
    {
        QFETCH(const QString, token);
        QFETCH(const QString, accountId);
        open();
        QTest::keyClicks(tokenField(), token);
        QTest::keyClicks(accountField(), accountId);
        QCoreApplication::processEvents();
        QTEST(testButton()->isEnabled(), "enabled");
        QVERIFY(button(u"Setup Guide"_s)->isEnabled());
    }

    void theTestButtonFollowsTheFieldsAsTheyAreTyped()
    {
        open();
        QTest::keyClicks(tokenField(), u" "_s);
        QCoreApplication::processEvents();
        QVERIFY(!testButton()->isEnabled());
        QTest::keyClicks(accountField(), u" "_s);
        QCoreApplication::processEvents();
        QVERIFY(testButton()->isEnabled());
        QTest::keyClick(tokenField(), Qt::Key_Backspace);
        QCoreApplication::processEvents();
        QVERIFY(!testButton()->isEnabled());
    }

    void aSuccessfulTestShowsTheGreenRow()
    {
        openWithCredentials();
        runTest();
        QCOMPARE(success(), u"Connected successfully!"_s);
        QCOMPARE(failure(), QString());
        QCOMPARE(testButton()->text(), u"Test Connection"_s);
        QVERIFY(testButton()->isEnabled());
        QCOMPARE(m_service->requestsWith("date_preset=today"), 2);
        QCOMPARE(m_service->requestsWith("date_preset=last_7d"), 1);
    }

    void aFailedTestShowsTheServicesMessage()
    {
        openWithCredentials();
        m_service->answerAll(LoopbackService::Reply::whole(apiError, 400));
        runTest();
        QCOMPARE(failure(), u"Error validating access token"_s);
        QCOMPARE(success(), QString());
        QVERIFY(testButton()->isEnabled());
        QCOMPARE(testButton()->text(), u"Test Connection"_s);
        QVERIFY(shows(u"Error validating access token"_s));
    }

    void aFailureWithoutAMessageIsAFailure()
    {
        openWithCredentials();
        m_service->answerAll(LoopbackService::Reply::whole(errorSaying("")));
        QTest::mouseClick(testButton(), Qt::LeftButton);
        QTRY_COMPARE(shownSymbols(), QStringList{u"xmark.circle.fill"_s});
        QVERIFY(WindowTree::find(window(), QAccessible::Notification, u"Connection failed"_s));
        QCOMPARE(success(), QString());
    }

    void aRunningTestShowsAWheelAndDisablesTheButton()
    {
        openWithCredentials();
        m_service->answerAll(LoopbackService::Reply::silence());
        QVERIFY(!testButton()->property("spinning").toBool());
        const QSize size = testButton()->size();
        QTest::mouseClick(testButton(), Qt::LeftButton);
        QCOMPARE(testButton()->text(), u"Testing…"_s);
        QCoreApplication::processEvents();
        QCOMPARE(testButton()->size(), size);
        QVERIFY(!testButton()->isEnabled());
        QVERIFY(button(u"Setup Guide"_s)->isEnabled());
        QVERIFY(testButton()->property("spinning").toBool());
        const QImage before = testButton()->grab().toImage();
        QTRY_VERIFY(testButton()->grab().toImage() != before); // it turns
        m_service.reset();
        QTRY_VERIFY(testButton()->isEnabled());
        QVERIFY(!testButton()->property("spinning").toBool());
        QVERIFY(testButton()->icon().isNull());
    }

    void aServiceThatStaysSilentEndsInTheTimeOutsMessage()
    {
        TestDeployment::setTransferTimeout(300ms);
        openWithCredentials();
        m_service->answerAll(LoopbackService::Reply::silence());
        runTest();
        QCOMPARE(failure(), u"Network error: The request timed out."_s);
    }

    void aSecondTestFirstRemovesTheRedRow()
    {
        openWithCredentials();
        m_service->answerAll(LoopbackService::Reply::whole(apiError));
        runTest();
        QVERIFY(!failure().isEmpty());
        m_service->answerInsights(someFigures, someFigures);
        QTest::mouseClick(testButton(), Qt::LeftButton);
        QCOMPARE(failure(), QString());
        QCOMPARE(success(), QString());
        QTRY_COMPARE(success(), u"Connected successfully!"_s);
        QCOMPARE(failure(), QString());
    }

    void aSecondTestFirstRemovesTheGreenRow()
    {
        openWithCredentials();
        runTest();
        QVERIFY(!success().isEmpty());
        m_service->answerAll(LoopbackService::Reply::whole(apiError));
        QTest::mouseClick(testButton(), Qt::LeftButton);
        QCOMPARE(success(), QString());
        QTRY_COMPARE(failure(), u"Error validating access token"_s);
        QCOMPARE(success(), QString());
    }

    void theViewStartsAtMostOneTestAtATime()
    {
        openWithCredentials();
        m_service->answerAll(LoopbackService::Reply::silence());
        QTest::mouseClick(testButton(), Qt::LeftButton);
        QTest::mouseClick(testButton(), Qt::LeftButton);
        QTest::keyClick(testButton(), Qt::Key_Space);
        QTest::keyClicks(accountField(), u"2"_s); // announces a change while the test is out
        QCoreApplication::processEvents();
        QVERIFY(!testButton()->isEnabled());
        testButton()->click();
        QCOMPARE(Task::running(), 1);
        QTRY_COMPARE(m_service->requestsWith("date_preset=today"), 1);
    }

    void whatStandsInTheFieldsIsWhatIsTested()
    {
        open();
        QTest::keyClicks(tokenField(), u"EAtyped"_s);
        QTest::keyClicks(accountField(), u"987"_s);
        QTRY_VERIFY(testButton()->isEnabled());
        runTest();
        QVERIFY(m_service->requestsWith("/act_987/insights") > 0);
        QVERIFY(m_service->requestsWith("access_token=EAtyped") > 0);
    }

    void editingAFieldKeepsTheResult_data()
    {
        QTest::addColumn<QByteArray>("today");
        QTest::addColumn<QString>("symbol");
        QTest::newRow("success") << someFigures << u"checkmark.circle.fill"_s;
        QTest::newRow("failure") << apiError << u"xmark.circle.fill"_s;
    }

    void editingAFieldKeepsTheResult()
    {
        QFETCH(const QByteArray, today);
        QFETCH(const QString, symbol);
        openWithCredentials();
        m_service->answerInsights(today, someFigures);
        runTest();
        QTest::keyClicks(accountField(), u"2"_s);
        QTest::keyClicks(tokenField(), u"3"_s);
        QTest::mouseClick(stepperButton(u"Increase"_s), Qt::LeftButton);
        QCoreApplication::processEvents();
        QCOMPARE(shownSymbols(), QStringList{symbol});
    }

    void aWindowOpenedAnewShowsNoResult()
    {
        openWithCredentials();
        runTest();
        reopen();
        QCOMPARE(success(), QString());
        QCOMPARE(failure(), QString());
    }

    void theResultIsANotificationForScreenReaders()
    {
        openWithCredentials();
        runTest();
        QVERIFY(WindowTree::find(window(), QAccessible::Notification, u"Connected successfully!"_s));
        m_service->answerAll(LoopbackService::Reply::whole(apiError));
        QTest::mouseClick(testButton(), Qt::LeftButton);
        QTRY_VERIFY(WindowTree::find(window(), QAccessible::Notification, u"Error validating access token"_s));
        QVERIFY(!WindowTree::find(window(), QAccessible::Notification, u"Connected successfully!"_s));
    }

    void theKeyboardFocusComesBackToTheTestButton()
    {
        openWithCredentials();
        testButton()->setFocus();
        QTest::keyClick(window(), Qt::Key_Space);
        QCOMPARE(QApplication::focusWidget(), testButton());
        QTest::keyClick(testButton(), Qt::Key_Space);
        QVERIFY(!testButton()->isEnabled());
        QVERIFY(!button(u"Setup Guide"_s)->hasFocus());
        QTRY_VERIFY(!success().isEmpty());
        QVERIFY(testButton()->hasFocus());
    }

    void theKeyboardFocusStaysWhereTheUserPutItMeanwhile()
    {
        openWithCredentials();
        QTest::mouseClick(testButton(), Qt::LeftButton);
        accountField()->setFocus();
        QTRY_VERIFY(!success().isEmpty());
        QVERIFY(accountField()->hasFocus());
    }

    void closingTheWindowDuringATestIsHarmless_data()
    {
        QTest::addColumn<QByteArray>("today");
        QTest::newRow("that succeeds") << someFigures;
        QTest::newRow("that fails") << apiError;
    }

    void closingTheWindowDuringATestIsHarmless()
    {
        QFETCH(const QByteArray, today);
        openWithCredentials();
        m_service->answerInsights(today, someFigures);
        QTest::mouseClick(testButton(), Qt::LeftButton);
        const QPointer<QWidget> closed = window();
        closed->close();
        QTRY_VERIFY(!closed);
        QTRY_COMPARE(Task::running(), 0);
        QCOMPARE(m_state->lastRefresh().has_value(), today == someFigures);
        reopen();
        QCOMPARE(success() + failure(), QString());
    }

private:
    /// Of all rows that tell an outcome.
    QStringList shownSymbols() const
    {
        QStringList symbols;
        for (const ResultRow *row : window()->findChildren<ResultRow *>())
            if (row->isVisible())
                symbols << row->symbolName();
        return symbols;
    }
};

QTEST_MAIN(ConnectionResultTest)
#include "ConnectionResultTest.moc"
