// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Controls/Windows/Alert.h"

#include <QCoroSignal>
#include <QMessageBox>
#include <QPushButton>
#include <QScopedPointer>

#include <memory>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

std::vector<QMessageBox *> openAlerts;

} // namespace

QCoro::Task<qsizetype> Alert::runModal(Alert alert)
{
    // Deleted later: the task goes on inside the box's own signal.
    const std::unique_ptr<QMessageBox, QScopedPointerDeleteLater> box(new QMessageBox);
    box->setWindowModality(Qt::ApplicationModal);
    box->setTextFormat(Qt::PlainText); // Qt would render the feed's text as HTML
    box->setIcon(alert.style == Style::Warning ? QMessageBox::Warning : QMessageBox::Information);
    box->setText(alert.messageText);
    box->setInformativeText(alert.informativeText);
    QList<QAbstractButton *> buttons;
    for (const QString &text : std::as_const(alert.buttons)) {
        const auto role = buttons.isEmpty() ? QMessageBox::AcceptRole : QMessageBox::RejectRole;
        buttons << box->addButton(QString(text).replace(u'&', u"&&"_s), role);
    }
    box->setDefaultButton(qobject_cast<QPushButton *>(buttons.first()));
    box->setEscapeButton(buttons.last());

    openAlerts.push_back(box.get());
    box->show();
    co_await qCoro(box.get(), &QMessageBox::finished);
    std::erase(openAlerts, box.get());
    const qsizetype pressed = buttons.indexOf(box->clickedButton());
    co_return pressed >= 0 ? pressed : buttons.size() - 1;
}

void Alert::dismissAll()
{
    const auto alerts = openAlerts;
    for (QMessageBox *box : alerts) {
        // One that was answered a moment ago has told its task already, and a task cannot be told twice.
        if (box->isVisible())
            box->reject();
    }
}
