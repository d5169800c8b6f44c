// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Controls/Labels/ResultRow.h"
#include "Foundation/Task.h"
#include "Json.h"
#include "LoopbackService.h"
#include "Pictures.h"
#include "State/AppState.h"
#include "TestClock.h"
#include "TestDeployment.h"
#include "TestPreferences.h"
#include "Views/WindowManager.h"
#include "WindowTree.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

inline const QByteArray someFigures = json("{'data': [{'impressions': '12345'}]}");

/// An error object of the service with this message.
inline QByteArray errorSaying(const QByteArray &message)
{
    return json("{'error': {'message': '") + message + json("'}}");
}

inline const QByteArray apiError = errorSaying("Error validating access token");

/// The Settings window over a state with a service on loopback and preferences of its own, new for every test.
class SettingsFixture : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestDeployment::setTransferTimeout(30s);
        m_preferences = std::make_unique<TestPreferences>();
        m_service = std::make_unique<LoopbackService>();
        m_service->answerInsights(someFigures, someFigures);
    }

    void cleanup()
    {
        Pictures::keepIfFailed();
        WindowManager::shared().closeAll();
        m_service.reset(); // whatever is still out fails now
        QTRY_COMPARE(Task::running(), 0);
        m_state.reset();
    }

protected:
    /// Opens the form over what is stored by now, once the program's own start has run out.
    void open()
    {
        m_state = AppState::create();
        QCoreApplication::processEvents(); // it begins on this turn
        QTRY_COMPARE(Task::running(), 0);
        reopen();
    }

    void openWithCredentials()
    {
        open();
        tokenField()->setText(u"EAtoken"_s);
        accountField()->setText(u"act_1"_s);
        QTRY_VERIFY(testButton()->isEnabled());
    }

    void reopen()
    {
        WindowManager::shared().closeAll();
        WindowManager::shared().openSettings(m_state);
        QVERIFY(QTest::qWaitForWindowActive(window()));
    }

    void runTest()
    {
        QTest::mouseClick(testButton(), Qt::LeftButton);
        QTRY_VERIFY(!success().isEmpty() || !failure().isEmpty());
    }

    QLineEdit *field(const QString &name) const
    {
        return qobject_cast<QLineEdit *>(WindowTree::find(window(), QAccessible::EditableText, name));
    }

    QPushButton *button(const QString &text) const
    {
        return qobject_cast<QPushButton *>(WindowTree::find(window(), QAccessible::Button, text));
    }

    QPushButton *testButton() const
    {
        QPushButton *const idle = button(u"Test Connection"_s);
        return idle ? idle : button(u"Testing…"_s);
    }

    /// The message beside the symbol; empty while there is no such row.
    QString row(const QString &symbolName) const
    {
        for (const ResultRow *row : window()->findChildren<ResultRow *>())
            if (row->symbolName() == symbolName && row->isVisible())
                return row->text();
        return {};
    }

    QWidget *stepperButton(const QString &name) const { return WindowTree::find(window(), QAccessible::Button, name); }

    QString threshold() const
    {
        QWidget *const stepper = WindowTree::find(window(), QAccessible::SpinBox, u"Stale threshold (minutes)"_s);
        return stepper->findChild<QLabel *>()->text();
    }

    QLabel *label(const QString &text) const
    {
        for (QLabel *label : window()->findChildren<QLabel *>())
            if (label->text() == text)
                return label;
        return nullptr;
    }

    QWidget *window() const { return WindowTree::windows(u"Vantelo Settings"_s).value(0); }
    QLineEdit *tokenField() const { return field(u"Access Token"_s); }
    QLineEdit *accountField() const { return field(u"Ad Account ID"_s); }
    QString failure() const { return row(u"xmark.circle.fill"_s); }
    QString success() const { return row(u"checkmark.circle.fill"_s); }
    bool shows(const QString &text) const { return WindowTree::names(window()).contains(text); }

    std::unique_ptr<TestPreferences> m_preferences;
    std::unique_ptr<LoopbackService> m_service;
    std::shared_ptr<AppState> m_state;
};
