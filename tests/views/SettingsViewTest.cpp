// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "App/AppState.h"
#include "LoopbackService.h"
#include "Platform/Task.h"
#include "TestClock.h"
#include "TestDeployment.h"
#include "TestPreferences.h"
#include "Views/ResultRow.h"
#include "Views/WindowManager.h"
#include "WindowTree.h"

#include <QClipboard>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QToolButton>

#include <ctime>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QByteArray someFigures = R"({"data": [{"impressions": "12345"}]})";
const QByteArray apiError = R"({"error": {"message": "Error validating access token"}})";

QByteArray testable(const char *text) { return QByteArray("{\"error\": {\"message\": \"") + text + "\"}}"; }

} // namespace

class SettingsViewTest : public QObject {
    Q_OBJECT

public:
    static void initMain()
    {
        qputenv("LC_ALL", "fi_FI.UTF-8"); // writes 22.13 where others write 22:13
        qputenv("TZ", "UTC");
        tzset();
    }

private Q_SLOTS:
    void init();
    void cleanup();

    void theFormShowsItsTextsInReadingOrder();
    void everyControlHasItsRole();
    void labelsBelongToTheirControls();
    void theFieldsShowPlaceholdersWhileEmpty();
    void theGapsAndPaddingsAreThoseOfTheForm();
    void textsAreSetInTheirStyles();

    void storedPreferencesFillTheForm();
    void everyKeystrokeIsStoredAtOnce();
    void textIsKeptExactlyAsTyped_data();
    void textIsKeptExactlyAsTyped();
    void pastedTextIsStoredAtOnce();
    void openingTheFormWritesNothing();
    void closingTheWindowKeepsTheEdit();
    void theCursorStaysWhereTheUserPutItWhenTheStateChanges();
    void aValueChangedElsewhereAppearsWhenTheWindowIsOpenedAnew();

    void theTokenIsMasked();
    void theTokenIsNotInTheAccessibilityTree();
    void theTokenCannotBeCopied();

    void theTestButtonNeedsBothCredentials_data();
    void theTestButtonNeedsBothCredentials();
    void theTestButtonFollowsTheFieldsAsTheyAreTyped();
    void aSuccessfulTestShowsTheGreenRow();
    void aFailedTestShowsTheServicesMessage();
    void aRunningTestShowsAWheelAndDisablesTheButton();
    void aServiceThatStaysSilentEndsInTheTimeOutsMessage();
    void aSecondTestFirstRemovesTheRedRow();
    void aSecondTestFirstRemovesTheGreenRow();
    void theViewStartsAtMostOneTestAtATime();
    void whatStandsInTheFieldsIsWhatIsTested();
    void editingAFieldKeepsTheResult();
    void aWindowOpenedAnewShowsNoResult();
    void theResultIsANotificationForScreenReaders();
    void theKeyboardFocusComesBackToTheTestButton();
    void closingTheWindowDuringATestIsHarmless_data();
    void closingTheWindowDuringATestIsHarmless();

    void theStepperGoesUpToSixty();
    void theStepperGoesDownToFive();
    void eachStepIsStoredAtOnce();
    void aThresholdOutOfRangeIsShownAsStored_data();
    void aThresholdOutOfRangeIsShownAsStored();

    void theFooterTellsTheLastRefreshOnlyAfterOne();
    void theLastRefreshIsWrittenAsTheUsersLocaleDoes();

    void theSetupGuideButtonOpensTheGuideAndKeepsTheForm();
    void theTabKeyFollowsTheReadingOrder();
    void nothingIsClippedWhateverTheFontSize_data();
    void nothingIsClippedWhateverTheFontSize();
    void aLongMessageIsCutToTwoLines();
    void theWindowGrowsWithAFontThatChangesWhileItIsOpen();
    void coloursFollowThePaletteAtRunTime();

private:
    void open();
    void openWithCredentials();
    void reopen();
    void runTest();
    QWidget *window() const { return WindowTree::windows(u"Vantelo Settings"_s).value(0); }
    QLineEdit *field(const QString &name) const;
    QLineEdit *tokenField() const { return field(u"Access Token"_s); }
    QLineEdit *accountField() const { return field(u"Ad Account ID"_s); }
    QPushButton *button(const QString &text) const;
    QPushButton *testButton() const;
    QString row(const QString &symbolName) const;
    QString failure() const { return row(u"xmark.circle.fill"_s); }
    QString success() const { return row(u"checkmark.circle.fill"_s); }
    QWidget *stepperButton(const QString &name) const;
    QString threshold() const;
    QLabel *label(const QString &text) const;
    bool shows(const QString &text) const { return WindowTree::names(window()).contains(text); }

    std::unique_ptr<TestPreferences> m_preferences;
    std::unique_ptr<LoopbackService> m_service;
    std::shared_ptr<AppState> m_state;
};

void SettingsViewTest::init()
{
    TestDeployment::setTransferTimeout(30s);
    m_preferences = std::make_unique<TestPreferences>();
    m_service = std::make_unique<LoopbackService>();
    m_service->answerInsights(someFigures, someFigures);
}

void SettingsViewTest::cleanup()
{
    WindowManager::shared().closeAll();
    m_service.reset(); // whatever is still out fails now
    QTRY_COMPARE(Task::running(), 0);
    m_state.reset();
}

/// Opens the form over what is stored by now, once the program's own start has run out.
void SettingsViewTest::open()
{
    m_state = AppState::create();
    QCoreApplication::processEvents(); // it begins on this turn
    QTRY_COMPARE(Task::running(), 0);
    reopen();
}

void SettingsViewTest::openWithCredentials()
{
    open();
    tokenField()->setText(u"EAtoken"_s);
    accountField()->setText(u"act_1"_s);
    QTRY_VERIFY(testButton()->isEnabled());
}

void SettingsViewTest::reopen()
{
    WindowManager::shared().closeAll();
    WindowManager::shared().openSettings(m_state);
    QVERIFY(QTest::qWaitForWindowActive(window()));
}

void SettingsViewTest::runTest()
{
    QTest::mouseClick(testButton(), Qt::LeftButton);
    QTRY_VERIFY(!success().isEmpty() || !failure().isEmpty());
}

QLineEdit *SettingsViewTest::field(const QString &name) const
{
    return qobject_cast<QLineEdit *>(WindowTree::find(window(), QAccessible::EditableText, name));
}

QPushButton *SettingsViewTest::button(const QString &text) const
{
    return qobject_cast<QPushButton *>(WindowTree::find(window(), QAccessible::Button, text));
}

QPushButton *SettingsViewTest::testButton() const
{
    QPushButton *const idle = button(u"Test Connection"_s);
    return idle ? idle : button(u"Testing…"_s);
}

/// The message beside the symbol; empty while there is no such row.
QString SettingsViewTest::row(const QString &symbolName) const
{
    for (const ResultRow *row : window()->findChildren<ResultRow *>())
        if (row->symbolName() == symbolName && row->isVisible())
            return row->text();
    return {};
}

QWidget *SettingsViewTest::stepperButton(const QString &name) const
{
    return WindowTree::find(window(), QAccessible::Button, name);
}

QString SettingsViewTest::threshold() const
{
    QWidget *const stepper = WindowTree::find(window(), QAccessible::SpinBox, u"Stale threshold (minutes)"_s);
    return stepper->findChild<QLabel *>()->text();
}

QLabel *SettingsViewTest::label(const QString &text) const
{
    for (QLabel *label : window()->findChildren<QLabel *>())
        if (label->text() == text)
            return label;
    return nullptr;
}

void SettingsViewTest::theFormShowsItsTextsInReadingOrder()
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

void SettingsViewTest::everyControlHasItsRole()
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

void SettingsViewTest::labelsBelongToTheirControls()
{
    open();
    QCOMPARE(label(u"Access Token"_s)->buddy(), tokenField());
    QCOMPARE(label(u"Ad Account ID"_s)->buddy(), accountField());
    QCOMPARE(WindowTree::accessible(label(u"Stale threshold (minutes)"_s)->buddy())->role(), QAccessible::SpinBox);
}

void SettingsViewTest::theFieldsShowPlaceholdersWhileEmpty()
{
    open();
    QCOMPARE(tokenField()->placeholderText(), u"EAxxxxxxxxxx..."_s);
    QCOMPARE(accountField()->placeholderText(), u"act_123456789 or 123456789"_s);
    QCOMPARE(tokenField()->text(), QString());
    QCOMPARE(accountField()->text(), QString());
}

void SettingsViewTest::theGapsAndPaddingsAreThoseOfTheForm()
{
    openWithCredentials();
    runTest();
    const auto place = [this](
                           const QWidget *widget) { return QRect(widget->mapTo(window(), QPoint()), widget->size()); };
    const auto gap = [&](const QWidget *upper, const QWidget *lower) {
        return place(lower).top() - place(upper).bottom() - 1;
    };
    const QWidget *const title = label(u"Vantelo Settings"_s);
    const QWidget *const subtitle = label(u"Connect your Ads account to monitor impressions."_s);
    const QWidget *const credentials = WindowTree::find(window(), QAccessible::Grouping, u"API Credentials"_s);
    const QWidget *const preferences = WindowTree::find(window(), QAccessible::Grouping, u"Preferences"_s);
    const QWidget *const result = WindowTree::find(window(), QAccessible::Notification, u"Connected successfully!"_s);
    const QWidget *const footer = label(u"Refreshes every 10 minutes"_s);
    QCOMPARE(place(title).topLeft(), QPoint(24, 24));
    QCOMPARE(gap(title, subtitle), 4);
    QCOMPARE(gap(subtitle, credentials), 20);
    QCOMPARE(gap(label(u"Access Token"_s), tokenField()), 4);
    QCOMPARE(gap(tokenField(), label(u"Ad Account ID"_s)), 12);
    QCOMPARE(gap(credentials, preferences), 16);
    QCOMPARE(gap(preferences, testButton()), 16);
    QCOMPARE(gap(testButton(), result), 8);
    QCOMPARE(result->contentsMargins().bottom(), 4);
    QCOMPARE(window()->height() - place(footer).bottom() - 1, 24);
    QCOMPARE(window()->width() - place(credentials).right() - 1, 24);
    QCOMPARE(window()->width() - place(button(u"Setup Guide"_s)).right() - 1, 24);
}

void SettingsViewTest::textsAreSetInTheirStyles()
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

void SettingsViewTest::storedPreferencesFillTheForm()
{
    m_preferences->write(u"accessToken"_s, u" EAstored "_s);
    m_preferences->write(u"adAccountId"_s, u"123 "_s);
    m_preferences->write(u"staleThresholdMinutes"_s, 40);
    open();
    QCOMPARE(tokenField()->text(), u" EAstored "_s);
    QCOMPARE(accountField()->text(), u"123 "_s);
    QCOMPARE(threshold(), u"40"_s);
}

void SettingsViewTest::everyKeystrokeIsStoredAtOnce()
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

void SettingsViewTest::textIsKeptExactlyAsTyped_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("blanks around") << u"  act_1 "_s;
    QTest::newRow("one blank") << u" "_s;
    QTest::newRow("no prefix") << u"123456789"_s;
    QTest::newRow("capital prefix") << u"ACT_1"_s;
    QTest::newRow("no number at all") << u"abc & <b>d</b>"_s;
}

void SettingsViewTest::textIsKeptExactlyAsTyped()
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

void SettingsViewTest::pastedTextIsStoredAtOnce()
{
    open();
    const QString longToken = u"EA"_s + QString(40'000, u'x');
    QApplication::clipboard()->setText(longToken);
    QTest::keySequence(tokenField(), QKeySequence::Paste);
    QCOMPARE(m_preferences->stored(u"accessToken"_s), longToken);
    QTest::keySequence(tokenField(), QKeySequence::Undo);
    QCOMPARE(m_preferences->stored(u"accessToken"_s), tokenField()->text());
}

void SettingsViewTest::openingTheFormWritesNothing()
{
    open();
    QCOMPARE(m_preferences->stored(u"accessToken"_s), QVariant());
    QCOMPARE(m_preferences->stored(u"adAccountId"_s), QVariant());
    QCOMPARE(m_preferences->stored(u"staleThresholdMinutes"_s), QVariant());
}

void SettingsViewTest::closingTheWindowKeepsTheEdit()
{
    open();
    QTest::keyClicks(tokenField(), u"EAnew"_s);
    QTest::keyClicks(accountField(), u"42"_s);
    window()->close();
    QCOMPARE(m_state->accessToken(), u"EAnew"_s);
    QCOMPARE(m_state->adAccountId(), u"42"_s);
}

void SettingsViewTest::theCursorStaysWhereTheUserPutItWhenTheStateChanges()
{
    openWithCredentials();
    accountField()->setFocus();
    accountField()->setCursorPosition(2);
    accountField()->setSelection(1, 2);
    Task::start(m_state->refresh());
    QTRY_COMPARE(Task::running(), 0);
    m_state->setAdAccountId(u"changed elsewhere"_s);
    QCoreApplication::processEvents();
    QCOMPARE(accountField()->text(), u"act_1"_s);
    QCOMPARE(accountField()->selectedText(), u"ct"_s);
    QTest::keyClicks(accountField(), u"X"_s);
    QCOMPARE(m_state->adAccountId(), u"aX_1"_s);
}

void SettingsViewTest::aValueChangedElsewhereAppearsWhenTheWindowIsOpenedAnew()
{
    open();
    m_preferences->write(u"adAccountId"_s, u"from elsewhere"_s);
    m_preferences->write(u"staleThresholdMinutes"_s, 25);
    reopen();
    QCOMPARE(accountField()->text(), u"from elsewhere"_s);
    QCOMPARE(threshold(), u"25"_s);
}

void SettingsViewTest::theTokenIsMasked()
{
    open();
    QTest::keyClicks(tokenField(), u"EAsecret"_s);
    QCOMPARE(tokenField()->echoMode(), QLineEdit::Password);
    QVERIFY(!tokenField()->displayText().contains(u"EA"_s));
    QVERIFY(
        tokenField()->inputMethodHints().testFlags(Qt::ImhSensitiveData | Qt::ImhHiddenText | Qt::ImhNoPredictiveText));
    for (const auto query :
        {Qt::ImSurroundingText, Qt::ImTextBeforeCursor, Qt::ImTextAfterCursor, Qt::ImCurrentSelection})
        QCOMPARE(tokenField()->inputMethodQuery(query).toString(), QString());
    QCOMPARE(accountField()->echoMode(), QLineEdit::Normal);
}

void SettingsViewTest::theTokenIsNotInTheAccessibilityTree()
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

void SettingsViewTest::theTokenCannotBeCopied()
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

void SettingsViewTest::theTestButtonNeedsBothCredentials_data()
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

void SettingsViewTest::theTestButtonNeedsBothCredentials()
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

void SettingsViewTest::theTestButtonFollowsTheFieldsAsTheyAreTyped()
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

void SettingsViewTest::aSuccessfulTestShowsTheGreenRow()
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

void SettingsViewTest::aFailedTestShowsTheServicesMessage()
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

void SettingsViewTest::aRunningTestShowsAWheelAndDisablesTheButton()
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
    QVERIFY(testButton()->property("spinning").toBool());
    const QImage before = testButton()->grab().toImage();
    QTRY_VERIFY(testButton()->grab().toImage() != before); // it turns
    m_service.reset();
    QTRY_VERIFY(testButton()->isEnabled());
    QVERIFY(!testButton()->property("spinning").toBool());
    QVERIFY(testButton()->icon().isNull());
}

void SettingsViewTest::aServiceThatStaysSilentEndsInTheTimeOutsMessage()
{
    TestDeployment::setTransferTimeout(300ms);
    openWithCredentials();
    m_service->answerAll(LoopbackService::Reply::silence());
    runTest();
    QCOMPARE(failure(), u"Network error: The request timed out."_s);
}

void SettingsViewTest::aSecondTestFirstRemovesTheRedRow()
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

void SettingsViewTest::aSecondTestFirstRemovesTheGreenRow()
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

void SettingsViewTest::theViewStartsAtMostOneTestAtATime()
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

void SettingsViewTest::whatStandsInTheFieldsIsWhatIsTested()
{
    open();
    QTest::keyClicks(tokenField(), u"EAtyped"_s);
    QTest::keyClicks(accountField(), u"987"_s);
    QTRY_VERIFY(testButton()->isEnabled());
    runTest();
    QVERIFY(m_service->requestsWith("/act_987/insights") > 0);
    QVERIFY(m_service->requestsWith("access_token=EAtyped") > 0);
}

void SettingsViewTest::editingAFieldKeepsTheResult()
{
    openWithCredentials();
    runTest();
    QTest::keyClicks(accountField(), u"2"_s);
    QCoreApplication::processEvents();
    QCOMPARE(success(), u"Connected successfully!"_s);
}

void SettingsViewTest::aWindowOpenedAnewShowsNoResult()
{
    openWithCredentials();
    runTest();
    reopen();
    QCOMPARE(success(), QString());
    QCOMPARE(failure(), QString());
}

void SettingsViewTest::theResultIsANotificationForScreenReaders()
{
    openWithCredentials();
    runTest();
    QVERIFY(WindowTree::find(window(), QAccessible::Notification, u"Connected successfully!"_s));
    m_service->answerAll(LoopbackService::Reply::whole(apiError));
    QTest::mouseClick(testButton(), Qt::LeftButton);
    QTRY_VERIFY(WindowTree::find(window(), QAccessible::Notification, u"Error validating access token"_s));
    QVERIFY(!WindowTree::find(window(), QAccessible::Notification, u"Connected successfully!"_s));
}

void SettingsViewTest::theKeyboardFocusComesBackToTheTestButton()
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

void SettingsViewTest::closingTheWindowDuringATestIsHarmless_data()
{
    QTest::addColumn<QByteArray>("today");
    QTest::newRow("that succeeds") << someFigures;
    QTest::newRow("that fails") << apiError;
}

void SettingsViewTest::closingTheWindowDuringATestIsHarmless()
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

void SettingsViewTest::theStepperGoesUpToSixty()
{
    open();
    QWidget *const increase = stepperButton(u"Increase"_s);
    for (const int expected : {20, 25, 30, 35, 40, 45, 50, 55, 60, 60, 60}) {
        QTest::mouseClick(increase, Qt::LeftButton);
        QCOMPARE(threshold(), QString::number(expected));
    }
}

void SettingsViewTest::theStepperGoesDownToFive()
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

void SettingsViewTest::eachStepIsStoredAtOnce()
{
    open();
    QTest::mouseClick(stepperButton(u"Increase"_s), Qt::LeftButton);
    QCOMPARE(m_preferences->stored(u"staleThresholdMinutes"_s).toInt(), 20);
    QTest::mouseClick(stepperButton(u"Decrease"_s), Qt::LeftButton);
    QTest::mouseClick(stepperButton(u"Decrease"_s), Qt::LeftButton);
    QCOMPARE(m_preferences->stored(u"staleThresholdMinutes"_s).toInt(), 10);
    QCOMPARE(m_state->staleThresholdMinutes(), 10);
}

void SettingsViewTest::aThresholdOutOfRangeIsShownAsStored_data()
{
    QTest::addColumn<qint64>("stored");
    QTest::addColumn<qint64>("afterIncrease");
    QTest::newRow("zero") << qint64{0} << qint64{5};
    QTest::newRow("negative") << qint64{-1234} << qint64{5};
    QTest::newRow("far above, without grouping") << qint64{12345} << qint64{60};
    QTest::newRow("between two steps") << qint64{17} << qint64{22};
}

void SettingsViewTest::aThresholdOutOfRangeIsShownAsStored()
{
    QFETCH(const qint64, stored);
    m_preferences->write(u"staleThresholdMinutes"_s, stored);
    open();
    QCOMPARE(threshold(), QString::number(stored));
    QTest::mouseClick(stepperButton(u"Increase"_s), Qt::LeftButton);
    QTEST(qint64{m_state->staleThresholdMinutes()}, "afterIncrease");
}

void SettingsViewTest::theFooterTellsTheLastRefreshOnlyAfterOne()
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

void SettingsViewTest::theLastRefreshIsWrittenAsTheUsersLocaleDoes()
{
    TestClock::set(1'700'000'000.0); // 22:13:20 UTC
    openWithCredentials();
    runTest();
    QTRY_VERIFY(shows(u"Last: 22.13"_s));
}

void SettingsViewTest::theSetupGuideButtonOpensTheGuideAndKeepsTheForm()
{
    open();
    QTest::mouseClick(button(u"Setup Guide"_s), Qt::LeftButton);
    QCOMPARE(WindowTree::windows(u"Setup Guide"_s).size(), 1);
    QCOMPARE(WindowTree::windows(u"Vantelo Settings"_s).size(), 1);
}

void SettingsViewTest::theTabKeyFollowsTheReadingOrder()
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

void SettingsViewTest::nothingIsClippedWhateverTheFontSize_data()
{
    QTest::addColumn<double>("points");
    QTest::newRow("small") << 7.0;
    QTest::newRow("usual") << 10.0;
    QTest::newRow("large") << 16.0;
    QTest::newRow("very large") << 26.0;
}

void SettingsViewTest::nothingIsClippedWhateverTheFontSize()
{
    QFETCH(const double, points);
    const WindowTree::SystemFontSize size(points);
    openWithCredentials();
    m_service->answerAll(LoopbackService::Reply::whole(testable("A message of some length that needs two lines at any "
                                                                "size, whatever the font, because it does not end.")));
    runTest();
    Task::start(m_state->refresh());
    QTRY_COMPARE(Task::running(), 0);
    QCoreApplication::processEvents();
    QCOMPARE(WindowTree::clippedTexts(window()), QStringList());
    for (const QWidget *child : window()->findChildren<QWidget *>()) {
        if (!child->isVisible())
            continue;
        const QSize least = child->minimumSizeHint();
        QVERIFY2(
            child->width() >= least.width() && child->height() >= least.height(), child->metaObject()->className());
        QVERIFY(window()->rect().contains(QRect(child->mapTo(window(), QPoint()), child->size())));
    }
    const auto *const result = window()->findChild<ResultRow *>();
    QCOMPARE(result->height(), result->heightForWidth(result->width()));
    QVERIFY(window()->width() >= 500);
    QVERIFY(window()->height() >= 560);
}

void SettingsViewTest::aLongMessageIsCutToTwoLines()
{
    openWithCredentials();
    const QByteArray endless = QByteArray("long message ").repeated(1000);
    m_service->answerAll(LoopbackService::Reply::whole(testable(endless.constData())));
    runTest();
    QCOMPARE(failure(), QString::fromLatin1(endless));
    const auto *const result = window()->findChild<ResultRow *>();
    QCOMPARE(result->height() - result->contentsMargins().bottom(), 2 * result->fontMetrics().lineSpacing());
    QCOMPARE(window()->size(), QSize(500, 560));
}

void SettingsViewTest::theWindowGrowsWithAFontThatChangesWhileItIsOpen()
{
    openWithCredentials();
    QCOMPARE(window()->size(), QSize(500, 560));
    const WindowTree::SystemFontSize size(26.0);
    QTRY_VERIFY(window()->width() > 500);
    QTRY_COMPARE(WindowTree::clippedTexts(window()), QStringList());
    QCOMPARE(label(u"Stale threshold (minutes)"_s)->font().pointSizeF(), 26.0);
}

void SettingsViewTest::coloursFollowThePaletteAtRunTime()
{
    openWithCredentials();
    runTest();
    QLabel *const secondary = label(u"Access Token"_s);
    QWidget *const result = WindowTree::find(window(), QAccessible::Notification, u"Connected successfully!"_s);
    const QColor inLight = secondary->palette().color(QPalette::WindowText);
    const QImage rowInLight = result->grab().toImage();
    QVERIFY(inLight.lightness() < 128);
    {
        const WindowTree::SystemPalette dark(WindowTree::darkPalette());
        QTRY_VERIFY(secondary->palette().color(QPalette::WindowText).lightness() > 128);
        QVERIFY(result->grab().toImage() != rowInLight);
    }
    QTRY_COMPARE(secondary->palette().color(QPalette::WindowText), inLight);
}

QTEST_MAIN(SettingsViewTest)
#include "SettingsViewTest.moc"
