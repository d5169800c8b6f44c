// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Controls/Windows/Alert.h"

#include <QDialog>

class QPlainTextEdit;

/// The window of an alert. Not QMessageBox: that one shows an informative text as HTML (seen with Qt 6.4), grows
/// with it beyond the screen, and is a box of the system's in an event loop of its own on macOS.
///
/// A long text scrolls, so that the window fits the screen of the mouse pointer and its buttons are in reach.
class AlertBox : public QDialog {
    Q_OBJECT

public:
    explicit AlertBox(const Alert &alert);

    /// The button behind the result that `finished()` tells. The last one where the window was closed otherwise.
    qsizetype pressedButton(int result) const;

protected:
    void showEvent(QShowEvent *event) override;

private:
    QLayout *texts(const Alert &alert);
    QWidget *buttons(const QStringList &texts);
    void fit(QPlainTextEdit *text) const;

    qsizetype m_buttonCount;
};
