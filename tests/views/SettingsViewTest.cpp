// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "SettingsFixture.h"

#include <QScrollArea>
#include <QToolButton>

#include <ctime>

/// The form as a whole: what it shows, its measures, the stepper and the last refresh.
class SettingsViewTest : public SettingsFixture {
    Q_OBJECT

public:
    static void initMain()
    {
        qputenv("LC_ALL", "fi_FI.UTF-8"); // writes 22.13 where others write 22:13
        qputenv("TZ", "UTC");
        tzset();
    }

private Q_SLOTS:
    void theFormShowsItsTextsInReadingOrder()
    {
        open();
        const QStringList expected{
            u"Vantelo Settings"_s, // the window
            u"Vantelo Settings"_s,
            u"Connect your Ads account to monitor impressions."_s,
            u"API Credentials"_s,
            u"Access Token"_s,
            u"Access Token"_s, // the field
            u"Ad Account ID"_s,
            u"Ad Account ID"_s, // the field
            u"Preferences"_s,
            u"Stale threshold (minutes)"_s,
            u"Stale threshold (minutes)"_s, // the stepper
            u"15"_s,
            u"Decrease"_s,
            u"Increase"_s,
            u"Test Connection"_s,
            u"Setup Guide"_s,
            u"Refreshes every 10 minutes"_s,
        };
        QCOMPARE(WindowTree::names(window()), expected);
    }

    void everyControlHasItsRole()
    {
        open();
        QCOMPARE(WindowTree::accessible(window())->role(), QAccessible::Window);
        QVERIFY(WindowTree::find(window(), QAccessible::Heading, u"Vantelo Settings"_s));
        QVERIFY(WindowTree::find(window(), QAccessible::Grouping, u"API Credentials"_s));
        QVERIFY(WindowTree::find(window(), QAccessible::Grouping, u"Preferences"_s));
        QVERIFY(tokenField());
        QVERIFY(accountField());
        QVERIFY(WindowTree::accessible(tokenField())->state().passwordEdit);
        QVERIFY(!WindowTree::accessible(accountField())->state().passwordEdit);
        QWidget *const stepper = WindowTree::find(window(), QAccessible::SpinBox, u"Stale threshold (minutes)"_s);
        QAccessibleValueInterface *const value = WindowTree::accessible(stepper)->valueInterface();
        QCOMPARE(value->currentValue().toInt(), 15);
        QCOMPARE(value->minimumValue().toInt(), 5);
        QCOMPARE(value->maximumValue().toInt(), 60);
        QCOMPARE(value->minimumStepSize().toInt(), 5);
    }

    void labelsBelongToTheirControls()
    {
        open();
        QCOMPARE(label(u"Access Token"_s)->buddy(), tokenField());
        QCOMPARE(label(u"Ad Account ID"_s)->buddy(), accountField());
        QCOMPARE(WindowTree::accessible(label(u"Stale threshold (minutes)"_s)->buddy())->role(), QAccessible::SpinBox);
    }

    void theFieldsShowPlaceholdersWhileEmpty()
    {
        open();
        QCOMPARE(tokenField()->placeholderText(), u"EAxxxxxxxxxx..."_s);
        QCOMPARE(accountField()->placeholderText(), u"act_123456789 or 123456789"_s);
        QCOMPARE(tokenField()->text(), QString());
        QCOMPARE(accountField()->text(), QString());
    }

    void theGapsAndPaddingsAreThoseOfTheForm()
    {
        openWithCredentials();
        runTest();
        const auto place = [this](const QWidget *widget) {
            return QRect(widget->mapTo(window(), QPoint()), widget->size());
        };
        const auto gap = [&](const QWidget *upper, const QWidget *lower) {
            return place(lower).top() - place(upper).bottom() - 1;
        };
        const QWidget *const title = label(u"Vantelo Settings"_s);
        const QWidget *const subtitle = label(u"Connect your Ads account to monitor impressions."_s);
        const QWidget *const credentials = WindowTree::find(window(), QAccessible::Grouping, u"API Credentials"_s);
        const QWidget *const preferences = WindowTree::find(window(), QAccessible::Grouping, u"Preferences"_s);
        const QWidget *const result =
            WindowTree::find(window(), QAccessible::Notification, u"Connected successfully!"_s);
        const QWidget *const footer = label(u"Refreshes every 10 minutes"_s);
        QCOMPARE(place(title).topLeft(), QPoint(24, 24));
        QCOMPARE(gap(title, subtitle), 4);
        QCOMPARE(gap(subtitle, credentials), 20);
        QCOMPARE(gap(label(u"Access Token"_s), tokenField()), 4);
        QCOMPARE(gap(tokenField(), label(u"Ad Account ID"_s)), 12);
        QCOMPARE(gap(credentials, preferences), 16);
        const QLabel *const threshold = label(u"Stale threshold (minutes)"_s);
        QCOMPARE(place(threshold).left(), place(tokenField()).left());
        QCOMPARE(place(threshold->buddy()).right(), place(tokenField()).right());
        QCOMPARE(threshold->buddy()->width(), threshold->buddy()->sizeHint().width());
        QCOMPARE(gap(preferences, testButton()), 16);
        QCOMPARE(gap(testButton(), result), 8);
        QCOMPARE(result->contentsMargins().bottom(), 4);
        QCOMPARE(window()->height() - place(footer).bottom() - 1, 24);
        QCOMPARE(window()->width() - place(credentials).right() - 1, 24);
        QCOMPARE(window()->width() - place(button(u"Setup Guide"_s)).right() - 1, 24);
    }

    void textsAreSetInTheirStyles()
    {
        openWithCredentials();
        runTest();
        const double body = label(u"Stale threshold (minutes)"_s)->font().pointSizeF();
        QCOMPARE(body, QApplication::font().pointSizeF());
        const QFont title = label(u"Vantelo Settings"_s)->font();
        QVERIFY(title.bold());
        QVERIFY(title.pointSizeF() > body);
        const double subheadline = label(u"Connect your Ads account to monitor impressions."_s)->font().pointSizeF();
        const double caption = label(u"Access Token"_s)->font().pointSizeF();
        const double caption2 = label(u"Refreshes every 10 minutes"_s)->font().pointSizeF();
        QVERIFY(body > subheadline);
        QVERIFY(subheadline > caption);
        QVERIFY(caption > caption2);
        QCOMPARE(label(u"Ad Account ID"_s)->font().pointSizeF(), caption);
        QCOMPARE(window()->findChild<ResultRow *>()->font().pointSizeF(), caption);
    }

    void theStepperGoesUpToSixty()
    {
        open();
        QWidget *const increase = stepperButton(u"Increase"_s);
        for (const int expected : {20, 25, 30, 35, 40, 45, 50, 55, 60, 60, 60}) {
            QTest::mouseClick(increase, Qt::LeftButton);
            QCOMPARE(threshold(), QString::number(expected));
        }
    }

    void theStepperGoesDownToFive()
    {
        open();
        QWidget *const decrease = stepperButton(u"Decrease"_s);
        decrease->setFocus();
        for (const int expected : {10, 5, 5, 5}) {
            QTest::keyClick(decrease, Qt::Key_Space);
            QCOMPARE(threshold(), QString::number(expected));
            QVERIFY(decrease->hasFocus());
        }
    }

    void eachStepIsStoredAtOnce()
    {
        open();
        QTest::mouseClick(stepperButton(u"Increase"_s), Qt::LeftButton);
        QCOMPARE(m_preferences->stored(u"staleThresholdMinutes"_s).toInt(), 20);
        QTest::mouseClick(stepperButton(u"Decrease"_s), Qt::LeftButton);
        QTest::mouseClick(stepperButton(u"Decrease"_s), Qt::LeftButton);
        QCOMPARE(m_preferences->stored(u"staleThresholdMinutes"_s).toInt(), 10);
        QCOMPARE(m_state->staleThresholdMinutes(), 10);
    }

    void aThresholdOutOfRangeIsShownAsStored_data()
    {
        QTest::addColumn<qint64>("stored");
        QTest::addColumn<qint64>("afterIncrease");
        QTest::newRow("zero") << qint64{0} << qint64{5};
        QTest::newRow("negative") << qint64{-1234} << qint64{5};
        QTest::newRow("far above, without grouping") << qint64{12345} << qint64{60};
        QTest::newRow("between two steps") << qint64{17} << qint64{22};
    }

    void aThresholdOutOfRangeIsShownAsStored()
    {
        QFETCH(const qint64, stored);
        m_preferences->write(u"staleThresholdMinutes"_s, stored);
        open();
        QCOMPARE(threshold(), QString::number(stored));
        QTest::mouseClick(stepperButton(u"Increase"_s), Qt::LeftButton);
        QTEST(qint64{m_state->staleThresholdMinutes()}, "afterIncrease");
    }

    void theFooterTellsTheLastRefreshOnlyAfterOne()
    {
        openWithCredentials();
        QVERIFY(WindowTree::names(window()).filter(u"Last:"_s).isEmpty());
        m_service->answerAll(LoopbackService::Reply::whole(apiError));
        runTest();
        QVERIFY(WindowTree::names(window()).filter(u"Last:"_s).isEmpty());
        m_service->answerInsights(someFigures, someFigures);
        Task::start(m_state->refresh());
        QTRY_COMPARE(WindowTree::names(window()).filter(u"Last:"_s).size(), 1);
    }

    void theLastRefreshIsWrittenAsTheUsersLocaleDoes()
    {
        TestClock::set(1'700'000'000.0); // 22:13:20 UTC
        openWithCredentials();
        runTest();
        QTRY_VERIFY(shows(u"Last: 22.13"_s));
    }

    void theSetupGuideButtonOpensTheGuideAndKeepsTheForm()
    {
        open();
        QTest::mouseClick(button(u"Setup Guide"_s), Qt::LeftButton);
        QCOMPARE(WindowTree::windows(u"Setup Guide"_s).size(), 1);
        QCOMPARE(WindowTree::windows(u"Vantelo Settings"_s).size(), 1);
    }

    void theTabKeyFollowsTheReadingOrder()
    {
        openWithCredentials();
        QCOMPARE(QApplication::focusWidget(), tokenField());
        const QList<QWidget *> order{accountField(), stepperButton(u"Decrease"_s), stepperButton(u"Increase"_s),
            testButton(), button(u"Setup Guide"_s), tokenField()};
        for (QWidget *const next : order) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            QCOMPARE(QApplication::focusWidget(), next);
        }
    }

    void nothingIsClippedWhateverTheFontSize_data()
    {
        QTest::addColumn<double>("points");
        QTest::newRow("small") << 7.0;
        QTest::newRow("usual") << 10.0;
        QTest::newRow("large") << 16.0;
        QTest::newRow("very large") << 26.0;
    }

    void nothingIsClippedWhateverTheFontSize()
    {
        QFETCH(const double, points);
        const WindowTree::SystemFontSize size(points);
        openWithCredentials();
        m_service->answerAll(
            LoopbackService::Reply::whole(errorSaying("A message of some length that needs two lines at any "
                                                      "size, whatever the font, because it does not end.")));
        runTest();
        Task::start(m_state->refresh());
        QTRY_COMPARE(Task::running(), 0);
        QCoreApplication::processEvents();
        QCOMPARE(WindowTree::clippedTexts(window()), QStringList());
        const QWidget *const form = window()->findChild<QScrollArea *>()->widget();
        for (const QWidget *child : form->findChildren<QWidget *>()) {
            if (!child->isVisible())
                continue;
            const QSize least = child->minimumSizeHint();
            QVERIFY2(
                child->width() >= least.width() && child->height() >= least.height(), child->metaObject()->className());
            QVERIFY(form->rect().contains(QRect(child->mapTo(form, QPoint()), child->size())));
        }
        const auto *const result = window()->findChild<ResultRow *>();
        QCOMPARE(result->height(), result->heightForWidth(result->width()));
        QVERIFY(window()->width() >= 500);
        QVERIFY(window()->height() >= 560);
    }

    void aLongMessageIsCutToTwoLines()
    {
        openWithCredentials();
        const QByteArray endless = QByteArray("long message ").repeated(1000);
        m_service->answerAll(LoopbackService::Reply::whole(errorSaying(endless)));
        runTest();
        QCOMPARE(failure(), QString::fromLatin1(endless));
        const auto *const result = window()->findChild<ResultRow *>();
        QCOMPARE(result->height() - result->contentsMargins().bottom(), 2 * result->fontMetrics().lineSpacing());
        QCOMPARE(window()->size(), QSize(500, 560));
    }

    void theWindowGrowsWithAFontThatChangesWhileItIsOpen()
    {
        openWithCredentials();
        QCOMPARE(window()->size(), QSize(500, 560));
        const WindowTree::SystemFontSize size(26.0);
        QTRY_VERIFY(window()->width() > 500);
        QTRY_COMPARE(WindowTree::clippedTexts(window()), QStringList());
        QCOMPARE(label(u"Stale threshold (minutes)"_s)->font().pointSizeF(), 26.0);
    }
};

QTEST_MAIN(SettingsViewTest)
#include "SettingsViewTest.moc"
