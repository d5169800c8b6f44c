// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "TimeGate.h"

#include "TestDeployment.h"

#include <QCoreApplication>
#include <QEvent>
#include <QTimer>

using namespace std::chrono_literals;

namespace {

constexpr std::chrono::milliseconds timeout = 7ms; // an odd one, so that no timer of Qt's own has the same

bool take(int &due)
{
    if (due == 0)
        return false;
    --due;
    return true;
}

} // namespace

TimeGate::TimeGate()
{
    TestDeployment::setTransferTimeout(timeout);
    QCoreApplication::instance()->installEventFilter(this);
}

bool TimeGate::eventFilter(QObject *object, QEvent *event)
{
    const auto *const timer = event->type() == QEvent::Timer ? qobject_cast<QTimer *>(object) : nullptr;
    if (timer == nullptr)
        return false;
    if (timer->intervalAsDuration() == timeout)
        return !take(m_dueTimeouts);
    return false;
}
