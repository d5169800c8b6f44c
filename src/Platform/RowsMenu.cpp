// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Platform/RowsMenu.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

bool isCommand(const MenuRow &row) { return row.kind == MenuRow::Kind::Button || row.kind == MenuRow::Kind::Link; }

bool fitsTheSameAction(const MenuRow &one, const MenuRow &other)
{
    return one.kind == other.kind || (isCommand(one) && isCommand(other));
}

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
    connect(this, &QMenu::aboutToHide, this, &RowsMenu::update, Qt::QueuedConnection);
}

void RowsMenu::setRows(const MenuRows &rows)
{
    m_rows = rows;
    update();
}

void RowsMenu::update()
{
    const bool sameActions = std::ranges::equal(m_rows, m_shown, fitsTheSameAction);
    if (!sameActions && isVisible())
        return;
    m_shown = m_rows;
    if (!sameActions)
        rebuild();
    retitle();
}

void RowsMenu::rebuild()
{
    clear();
    for (std::size_t index = 0; index < m_shown.size(); ++index) {
        QAction *const action = addAction(QString());
        action->setSeparator(m_shown[index].kind == MenuRow::Kind::Divider);
        action->setEnabled(isCommand(m_shown[index]));
        connect(action, &QAction::triggered, this, [this, index] { chooseRow(index); });
    }
}

void RowsMenu::retitle()
{
    const QList<QAction *> all = actions();
    for (std::size_t index = 0; index < m_shown.size(); ++index) {
        QAction *const action = all.at(static_cast<qsizetype>(index));
        action->setText(QString(m_shown[index].text).replace(u'&', u"&&"_s));
        action->setFont(fontFor(m_shown[index].style, font()));
    }
}

void RowsMenu::chooseRow(std::size_t index) const
{
    const MenuRow row = m_shown.at(index); // a copy: the action may change the rows
    choose(row);
}
