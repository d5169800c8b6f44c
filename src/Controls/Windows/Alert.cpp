// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Controls/Windows/Alert.h"

#include "Controls/Windows/AlertBox.h"

#include <QCoroSignal>
#include <QScopedPointer>

#include <memory>
#include <vector>

namespace {

std::vector<AlertBox *> openAlerts;

} // namespace

QCoro::Task<qsizetype> Alert::runModal(Alert alert)
{
    // Deleted later: the task goes on inside the box's own signal.
    const std::unique_ptr<AlertBox, QScopedPointerDeleteLater> box(new AlertBox(alert));
    openAlerts.push_back(box.get());
    box->show();
    const int result = co_await qCoro(box.get(), &AlertBox::finished);
    std::erase(openAlerts, box.get());
    co_return box->pressedButton(result);
}

void Alert::dismissAll()
{
    const auto alerts = openAlerts;
    for (AlertBox *box : alerts) {
        // One that was answered a moment ago has told its task already, and a task cannot be told twice.
        if (box->isVisible())
            box->reject();
    }
}
