// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QCoroTask>
#include <QWidget>

#include <cstdint>
#include <memory>
#include <optional>

class AppState;
class ProgressButton;
class QLineEdit;
class ResultRow;
class Stepper;
class StoredText;
class TextLabel;

/// The form of the Settings window. Every edit is stored the moment it is made, exactly as it was typed; what others
/// store appears.
class SettingsView : public QWidget {
    Q_OBJECT

public:
    explicit SettingsView(std::shared_ptr<AppState> appState);

protected:
    bool event(QEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    QWidget *header();
    QWidget *credentials();
    QWidget *preferences();
    QWidget *buttons();
    QWidget *footer();

    void showStored();
    void storeThreshold(std::int64_t minutes);
    void startTest();
    void finishTest(const std::optional<QString> &failure);
    void recolourPlaceholders();
    void refreshSoon();
    void refresh();

    std::shared_ptr<AppState> m_appState;
    std::unique_ptr<QObject> m_watch; ///< over what is stored; there is none while no view shows it
    StoredText *m_token = nullptr;
    StoredText *m_accountId = nullptr;
    Stepper *m_threshold = nullptr;
    std::int64_t m_shownThreshold;
    ProgressButton *m_testButton = nullptr;
    ResultRow *m_failure = nullptr;
    ResultRow *m_success = nullptr;
    TextLabel *m_lastRefresh = nullptr;
    bool m_isTesting = false;
    bool m_refreshPending = false;
};
