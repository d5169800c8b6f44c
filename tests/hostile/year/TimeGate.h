// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>

/// Lets the program's own timers go off when their time has come by the virtual clock, and not before. While it
/// lives, the poll interval and the transfer time-out are a few milliseconds; a timer that comes up too early is
/// held back and comes up again. So ten minutes cost no time at all, and on a slow machine nothing times out
/// that should not.
class TimeGate : public QObject {
    Q_OBJECT

public:
    TimeGate();

    /// The poll timer goes off once.
    void letPollPass() { ++m_duePolls; }
    /// The one transfer that is under way has been silent for too long.
    void letTransferTimeOut() { ++m_dueTimeouts; }
    bool isPollDue() const { return m_duePolls > 0; }

    bool eventFilter(QObject *object, QEvent *event) override;

private:
    int m_duePolls = 0;
    int m_dueTimeouts = 0;
};
