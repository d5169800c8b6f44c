// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Views/SettingsView.h"

#include "Controls/Boxes/TitledBox.h"
#include "Controls/Fields/ProgressButton.h"
#include "Controls/Fields/Stepper.h"
#include "Controls/Fields/StoredText.h"
#include "Controls/Fields/TokenField.h"
#include "Controls/Labels/ResultRow.h"
#include "Controls/Labels/TextLabel.h"
#include "Foundation/Task.h"
#include "State/AppState.h"
#include "Views/WindowManager.h"

#include <QEvent>
#include <QLocale>
#include <QPointer>
#include <QVBoxLayout>

#include <functional>
#include <limits>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// Children below one another, or beside one another, with this spacing and nothing around them.
template <class Layout>
Layout *stack(QWidget *owner, int spacing, int padding = 0)
{
    auto *const layout = new Layout(owner);
    layout->setSpacing(spacing);
    layout->setContentsMargins(padding, padding, padding, padding);
    return layout;
}

/// A caption above its field.
QLayout *labelled(const QString &caption, QLineEdit *field)
{
    auto *const label = new TextLabel(caption, TextStyle::Caption, Theme::Ink::Secondary);
    label->setBuddy(field);
    field->setAccessibleName(caption);
    // Qt's own limit would cut a very long text without a word.
    field->setMaxLength(std::numeric_limits<int>::max());
    auto *const column = stack<QVBoxLayout>(nullptr, 4);
    column->addWidget(label);
    column->addWidget(field);
    return column;
}

/// Some styles leave the text of a push button hardly any room.
void giveRoom(QPushButton *button)
{
    button->setMinimumWidth(button->fontMetrics().horizontalAdvance(button->text()) + 32);
}

QString shortTime(const QTime &time)
{
    const QLocale locale = QLocale::system();
    QString format = locale.timeFormat(QLocale::ShortFormat);
    return locale.toString(time, format.remove(u":ss"_s)); // the short format of the C locale has seconds
}

/// Holds the state, but not the view: the window may be closed while the test is out.
QCoro::Task<> testConnection(std::shared_ptr<AppState> appState, std::function<void(std::optional<QString>)> finish)
{
    const std::optional<QString> failure = co_await appState->testConnection();
    finish(failure);
}

} // namespace

SettingsView::SettingsView(std::shared_ptr<AppState> appState)
    : m_appState(std::move(appState)),
      m_watch(m_appState->watchPreferences()), // before the first look, so that nothing is missed
      m_shownThreshold(m_appState->staleThresholdMinutes())
{
    setMinimumSize(460, 560);
    m_failure = new ResultRow(u"xmark.circle.fill"_s, u"Connection failed"_s, Theme::Ink::Red, 4);
    m_success = new ResultRow(u"checkmark.circle.fill"_s, u"Connected"_s, Theme::Ink::Green, 4);
    auto *const form = stack<QVBoxLayout>(this, 0, 24);
    form->addWidget(header());
    form->addSpacing(20);
    form->addWidget(credentials());
    form->addSpacing(16);
    form->addWidget(preferences());
    form->addSpacing(16);
    form->addWidget(buttons());
    form->addSpacing(8);
    form->addWidget(m_failure);
    form->addWidget(m_success);
    form->addStretch();
    form->addWidget(footer());
    recolourPlaceholders();
    refresh();
    connect(m_appState.get(), &AppState::objectWillChange, this, &SettingsView::refreshSoon);
}

QWidget *SettingsView::header()
{
    auto *const header = new QWidget;
    auto *const title = new TextLabel(u"Vantelo Settings"_s, TextStyle::Title2);
    title->setWeight(QFont::Bold);
    auto *const column = stack<QVBoxLayout>(header, 4);
    column->addWidget(title);
    column->addWidget(new TextLabel(
        u"Connect your Ads account to monitor impressions."_s, TextStyle::Subheadline, Theme::Ink::Secondary));
    return header;
}

QWidget *SettingsView::credentials()
{
    auto *const token = new TokenField;
    token->setPlaceholderText(u"EAxxxxxxxxxx..."_s);
    m_token = new StoredText(
        token, [this] { return m_appState->accessToken(); },
        [this](const QString &text) { m_appState->setAccessToken(text); });

    auto *const accountId = new QLineEdit;
    accountId->setPlaceholderText(u"act_123456789 or 123456789"_s);
    m_accountId = new StoredText(
        accountId, [this] { return m_appState->adAccountId(); },
        [this](const QString &text) { m_appState->setAdAccountId(text); });

    auto *const box = new TitledBox(u"API Credentials"_s);
    auto *const column = stack<QVBoxLayout>(box, 12, 8);
    column->addLayout(labelled(u"Access Token"_s, token));
    column->addLayout(labelled(u"Ad Account ID"_s, accountId));
    return box;
}

QWidget *SettingsView::preferences()
{
    const QString caption = u"Stale threshold (minutes)"_s;
    m_threshold = new Stepper(caption, {.lowest = 5, .highest = 60, .step = 5}, m_shownThreshold);
    connect(m_threshold, &Stepper::stepped, this, &SettingsView::storeThreshold);
    auto *const label = new TextLabel(caption);
    label->setBuddy(m_threshold);

    auto *const box = new TitledBox(u"Preferences"_s);
    auto *const row = stack<QHBoxLayout>(nullptr, 8);
    row->addWidget(label);
    row->addStretch();
    row->addWidget(m_threshold);
    stack<QVBoxLayout>(box, 12, 8)->addLayout(row);
    return box;
}

QWidget *SettingsView::buttons()
{
    m_testButton = new ProgressButton(u"Test Connection"_s);
    connect(m_testButton, &QPushButton::clicked, this, &SettingsView::startTest);
    giveRoom(m_testButton);
    auto *const guide = new QPushButton(u"Setup Guide"_s);
    giveRoom(guide);
    connect(guide, &QPushButton::clicked, this, [] { WindowManager::shared().openSetupGuide(); });

    auto *const buttons = new QWidget;
    auto *const row = stack<QHBoxLayout>(buttons, 8);
    row->addWidget(m_testButton);
    row->addStretch();
    row->addWidget(guide);
    return buttons;
}

QWidget *SettingsView::footer()
{
    m_lastRefresh = new TextLabel({}, TextStyle::Caption2, Theme::Ink::Secondary);
    auto *const footer = new QWidget;
    auto *const row = stack<QHBoxLayout>(footer, 8);
    row->addWidget(new TextLabel(u"Refreshes every 10 minutes"_s, TextStyle::Caption2, Theme::Ink::Secondary));
    row->addStretch();
    row->addWidget(m_lastRefresh);
    return footer;
}

void SettingsView::showStored()
{
    m_token->catchUp();
    m_accountId->catchUp();
    m_shownThreshold = m_appState->staleThresholdMinutes();
    m_threshold->setValue(m_shownThreshold);
}

void SettingsView::storeThreshold(std::int64_t minutes)
{
    if (m_appState->staleThresholdMinutes() == m_shownThreshold) // else the step was one from another number
        m_appState->setStaleThresholdMinutes(minutes);
    showStored();
}

void SettingsView::startTest()
{
    m_isTesting = true;
    m_failure->hide();
    m_success->hide();
    // The focus would move on from the disabled button, to the guide's; a second press is to do nothing.
    m_testButton->clearFocus();
    refresh(); // so that what is tested is what is on the screen
    const QPointer<SettingsView> view(this);
    Task::start(testConnection(m_appState, [view](const std::optional<QString> &failure) {
        if (view)
            view->finishTest(failure);
    }));
}

void SettingsView::finishTest(const std::optional<QString> &failure)
{
    m_isTesting = false;
    refresh();
    if (!window()->focusWidget())
        m_testButton->setFocus();
    if (failure)
        m_failure->announce(*failure);
    else
        m_success->announce(u"Connected successfully!"_s);
}

bool SettingsView::event(QEvent *event)
{
    if (event->type() == QEvent::WindowActivate)
        refreshSoon();
    return QWidget::event(event);
}

void SettingsView::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        recolourPlaceholders();
}

// On a dark Plasma Qt's own are black on black.
void SettingsView::recolourPlaceholders()
{
    QPalette own;
    own.setColor(QPalette::PlaceholderText, Theme::colour(Theme::Ink::Secondary, palette()));
    const auto fields = findChildren<QLineEdit *>();
    for (QLineEdit *field : fields)
        field->setPalette(own);
}

void SettingsView::refreshSoon()
{
    if (std::exchange(m_refreshPending, true))
        return;
    QMetaObject::invokeMethod(this, &SettingsView::refresh, Qt::QueuedConnection);
}

void SettingsView::refresh()
{
    m_refreshPending = false;
    showStored();
    m_testButton->setText(m_isTesting ? u"Testing…"_s : u"Test Connection"_s);
    m_testButton->setSpinning(m_isTesting);
    m_testButton->setEnabled(!m_isTesting && m_appState->hasCredentials());
    const std::optional<QDateTime> &lastRefresh = m_appState->lastRefresh();
    m_lastRefresh->setVisible(lastRefresh.has_value());
    if (lastRefresh)
        m_lastRefresh->setText(u"Last: "_s + shortTime(lastRefresh->time()));
}
