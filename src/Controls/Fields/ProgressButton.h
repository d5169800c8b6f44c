// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QBasicTimer>
#include <QPushButton>

/// A push button that shows a small turning wheel before its text while something is under way.
class ProgressButton : public QPushButton {
    Q_OBJECT
    Q_PROPERTY(bool spinning READ isSpinning WRITE setSpinning)

public:
    using QPushButton::QPushButton;

    bool isSpinning() const { return m_spinning; }
    void setSpinning(bool spinning);

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    void drawWheel();

    QBasicTimer m_timer;
    bool m_spinning = false;
    int m_turn = 0;
};
