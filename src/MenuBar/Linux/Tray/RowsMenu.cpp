// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "MenuBar/Linux/Tray/RowsMenu.h"

#include "Look/ColourPreference.h"
#include "Look/Theme.h"

#include <QGuiApplication>
#include <QScreen>
#include <QStyleOptionMenuItem>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr double captionScale = 0.85;

QFont fontFor(MenuRow::Style style, QFont font)
{
    if (style == MenuRow::Style::Headline)
        font.setBold(true);
    if (style == MenuRow::Style::Caption) {
        if (font.pointSizeF() > 0.0)
            font.setPointSizeF(font.pointSizeF() * captionScale);
        else
            font.setPixelSize(qRound(font.pixelSize() * captionScale));
    }
    return font;
}

/// The text as it stands: to a menu an ampersand marks an access key, and a tab begins a shortcut at the right edge.
QString plain(QString text) { return text.replace(u'&', u"&&"_s).replace(u'\t', u' '); }

} // namespace

RowsMenu::RowsMenu()
{
    // Later: the menu hides before it tells which action was chosen.
    connect(
        this, &QMenu::aboutToHide, this, [this] { apply(m_shown.update(isVisible())); }, Qt::QueuedConnection);
}

void RowsMenu::setRows(const MenuRows &rows) { apply(m_shown.setNewest(rows, isVisible())); }

// Qt keeps menus clear of panels, except on Plasma.
void RowsMenu::popUpBeside(const QRect &clicked)
{
    ColourPreference::follow();
    const QScreen *const pointed = QGuiApplication::screenAt(clicked.center());
    const QRect room = (pointed ? pointed : QGuiApplication::primaryScreen())->availableGeometry();
    const QSize size = sizeHint();
    const QPoint below = clicked.topLeft() + QPoint(0, clicked.height());
    const bool fitsBelow = below.y() + size.height() <= room.y() + room.height();
    const int y = fitsBelow ? below.y() : clicked.y() - size.height();
    // No std::clamp, because the bounds cross where a menu is larger than the room; then Qt has the last word.
    popup({std::max(std::min(below.x(), room.x() + room.width() - size.width()), room.x()),
        std::max(std::min(y, room.y() + room.height() - size.height()), room.y())});
}

// Lines cannot be chosen, but they are there to be read; the palettes' colours for the disabled are too pale for that.
void RowsMenu::initStyleOption(QStyleOptionMenuItem *option, const QAction *action) const
{
    QMenu::initStyleOption(option, action);
    for (const QPalette::ColorRole role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
        option->palette.setColor(QPalette::Disabled, role, Theme::colour(Theme::Ink::Secondary, palette()));
}

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
        action->setText(plain(row.text));
        action->setFont(fontFor(row.style, font()));
    }
}

void RowsMenu::chooseRow(std::size_t index) const
{
    const MenuRow row = m_shown.rows().at(index); // a copy: the action may change the rows
    choose(row);
}
