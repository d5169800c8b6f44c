// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Platform/Linux/RowsMenu.h"

using namespace Qt::StringLiterals;

namespace {

QFont fontFor(MenuRow::Style style, QFont font)
{
    if (style == MenuRow::Style::Headline)
        font.setBold(true);
    if (style == MenuRow::Style::Caption && font.pointSizeF() > 0)
        font.setPointSizeF(font.pointSizeF() * 0.85);
    return font;
}

} // namespace

RowsMenu::RowsMenu()
{
    // Later: the menu hides before it tells which action was chosen.
    connect(
        this, &QMenu::aboutToHide, this, [this] { apply(m_shown.update(isVisible())); }, Qt::QueuedConnection);
}

void RowsMenu::setRows(const MenuRows &rows) { apply(m_shown.setNewest(rows, isVisible())); }

void RowsMenu::apply(ShownRows::Change change)
{
    if (change == ShownRows::Change::Items)
        rebuild();
    if (change != ShownRows::Change::Nothing)
        retitle();
}

void RowsMenu::rebuild()
{
    clear();
    for (std::size_t index = 0; index < m_shown.rows().size(); ++index) {
        const MenuRow &row = m_shown.rows()[index];
        QAction *const action = addAction(QString());
        action->setSeparator(row.kind == MenuRow::Kind::Divider);
        action->setEnabled(row.isCommand());
        connect(action, &QAction::triggered, this, [this, index] { chooseRow(index); });
    }
}

void RowsMenu::retitle()
{
    const QList<QAction *> all = actions();
    for (std::size_t index = 0; index < m_shown.rows().size(); ++index) {
        const MenuRow &row = m_shown.rows()[index];
        QAction *const action = all.at(static_cast<qsizetype>(index));
        action->setText(QString(row.text).replace(u'&', u"&&"_s));
        action->setFont(fontFor(row.style, font()));
    }
}

void RowsMenu::chooseRow(std::size_t index) const
{
    const MenuRow row = m_shown.rows().at(index); // a copy: the action may change the rows
    choose(row);
}
