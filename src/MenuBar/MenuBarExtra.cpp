// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "MenuBar/MenuBarExtra.h"

#include <QDesktopServices>

#include <utility>

using namespace Qt::StringLiterals;

QString symbol(StatusDot dot)
{
    switch (dot) {
    case StatusDot::Green:
        return u"🟢"_s;
    case StatusDot::Red:
        return u"🔴"_s;
    case StatusDot::White:
        break;
    }
    return u"⚪"_s;
}

QString MenuBarLabel::whole() const { return symbol(dot) + u' ' + text; }

MenuRow MenuRow::line(const QString &text, Style style)
{
    return {.kind = Kind::Text, .text = text, .style = style, .action = {}, .destination = {}};
}

MenuRow MenuRow::divider()
{
    return {.kind = Kind::Divider, .text = {}, .style = Style::Body, .action = {}, .destination = {}};
}

MenuRow MenuRow::button(const QString &text, std::function<void()> action)
{
    return {.kind = Kind::Button, .text = text, .style = Style::Body, .action = std::move(action), .destination = {}};
}

MenuRow MenuRow::link(const QString &text, const QUrl &destination)
{
    return {.kind = Kind::Link, .text = text, .style = Style::Body, .action = {}, .destination = destination};
}

void choose(const MenuRow &row)
{
    if (row.kind == MenuRow::Kind::Button && row.action)
        row.action();
    if (row.kind == MenuRow::Kind::Link)
        QDesktopServices::openUrl(row.destination);
}
