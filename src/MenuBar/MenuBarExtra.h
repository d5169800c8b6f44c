// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QUrl>

#include <functional>
#include <memory>
#include <vector>

/// The coloured dot that leads the label.
enum class StatusDot { Green, Red, White };

/// The dot as a character: "🟢", "🔴" or "⚪".
QString symbol(StatusDot dot);

/// What always stands in the menu bar.
struct MenuBarLabel {
    StatusDot dot = StatusDot::White;
    QString text;
    QString accessibleDescription; ///< the state and the count as one sentence, for screen readers

    /// Dot, one blank, text.
    QString whole() const;

    friend bool operator==(const MenuBarLabel &, const MenuBarLabel &) = default;
};

/// One row of the menu. Texts are plain and appear exactly as given, "_" and "&" included.
struct MenuRow {
    enum class Kind {
        Text,    ///< a disabled line
        Divider, ///< a separator
        Button,  ///< runs `action`
        Link,    ///< opens `destination` in the user's browser
    };
    enum class Style { Body, Headline, Caption };

    Kind kind = Kind::Text;
    QString text;
    Style style = Style::Body;
    std::function<void()> action;
    QUrl destination;

    /// Whether it can be chosen.
    bool isCommand() const { return kind == Kind::Button || kind == Kind::Link; }

    static MenuRow line(const QString &text, Style style = Style::Body);
    static MenuRow divider();
    static MenuRow button(const QString &text, std::function<void()> action);
    static MenuRow link(const QString &text, const QUrl &destination);
};

using MenuRows = std::vector<MenuRow>;

/// Does what choosing the row in a menu does: runs a button's action, opens a link, and nothing for the rest.
void choose(const MenuRow &row);

/// The program's one item in the menu bar. Drawing is the platform's own business: a repeated label or
/// unchanged rows cost nothing, and rows that keep their place are changed while the menu is open.
class MenuBarExtra {
public:
    static std::unique_ptr<MenuBarExtra> create();

    MenuBarExtra() = default;
    virtual ~MenuBarExtra() = default;
    Q_DISABLE_COPY_MOVE(MenuBarExtra)

    virtual void setLabel(const MenuBarLabel &label) = 0;
    virtual void setRows(const MenuRows &rows) = 0;

    /// Closes the menu where it is this process that keeps it open and waits for it.
    virtual void closeMenu() {}
};
