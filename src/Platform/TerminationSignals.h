// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>

#include <memory>

class QSocketNotifier;

/// Turns SIGTERM and SIGINT into a signal of the event loop, so that the program ends as it does by Quit.
class TerminationSignals : public QObject {
    Q_OBJECT

public:
    TerminationSignals();
    ~TerminationSignals() override;
    Q_DISABLE_COPY_MOVE(TerminationSignals)

Q_SIGNALS:
    void received();

private:
    std::unique_ptr<QSocketNotifier> m_notifier;
};
