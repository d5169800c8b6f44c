// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>

/// Lets transfers time out when the test says so, and not before. While it lives, the transfer time-out is a few
/// milliseconds; a timer that comes up too early is held back and comes up again. So a time-out costs no time at all,
/// and on a slow machine nothing times out that should not.
class TimeGate : public QObject {
    Q_OBJECT

public:
    TimeGate();

    /// The one transfer that is under way has been silent for too long.
    void letTransferTimeOut() { ++m_dueTimeouts; }

    bool eventFilter(QObject *object, QEvent *event) override;

private:
    int m_dueTimeouts = 0;
};
