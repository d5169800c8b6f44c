// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QAccessible>
#include <QApplication>
#include <QFont>
#include <QLabel>
#include <QPalette>
#include <QStringList>
#include <QWidget>

/// How the tests find their way in a window: by what a user sees and what a screen reader reads.
namespace WindowTree {

inline QAccessibleInterface *accessible(QObject *object) { return QAccessible::queryAccessibleInterface(object); }

inline void collect(QAccessibleInterface *node, QList<QAccessibleInterface *> &nodes)
{
    if (!node || node->state().invisible)
        return;
    nodes.append(node);
    for (int i = 0; i < node->childCount(); ++i)
        collect(node->child(i), nodes);
}

/// Every visible node of the window's accessibility tree, in reading order.
inline QList<QAccessibleInterface *> nodes(QWidget *window)
{
    QList<QAccessibleInterface *> nodes;
    collect(accessible(window), nodes);
    return nodes;
}

/// The names in the tree, in reading order, without the nameless containers.
inline QStringList names(QWidget *window)
{
    QStringList names;
    for (QAccessibleInterface *node : nodes(window))
        if (const QString name = node->text(QAccessible::Name); !name.isEmpty())
            names.append(name);
    return names;
}

/// The visible widget that screen readers know by this name and role.
inline QWidget *find(QWidget *window, QAccessible::Role role, const QString &name)
{
    for (QAccessibleInterface *node : nodes(window))
        if (node->role() == role && node->text(QAccessible::Name) == name)
            return qobject_cast<QWidget *>(node->object());
    return nullptr;
}

/// The visible windows of this title.
inline QWidgetList windows(const QString &title)
{
    QWidgetList windows;
    for (QWidget *widget : QApplication::topLevelWidgets())
        if (widget->isVisible() && widget->windowTitle() == title)
            windows.append(widget);
    return windows;
}

/// The texts of all labels that are not given the room they need.
inline QStringList clippedTexts(QWidget *window)
{
    QStringList clipped;
    for (const QLabel *label : window->findChildren<QLabel *>()) {
        const bool wraps = label->wordWrap();
        const int height = wraps ? label->heightForWidth(label->width()) : label->sizeHint().height();
        const bool narrow = !wraps && label->width() < label->sizeHint().width();
        if (label->isVisible() && (narrow || label->height() < height))
            clipped.append(label->text());
    }
    return clipped;
}

inline QPalette darkPalette() { return {QColor(0x35, 0x35, 0x35), QColor(0x2b, 0x2b, 0x2b)}; }

/// Another system font size while the object lives.
class SystemFontSize {
public:
    explicit SystemFontSize(double points) : m_previous(QApplication::font())
    {
        QFont font = m_previous;
        font.setPointSizeF(points);
        QApplication::setFont(font);
    }
    ~SystemFontSize() { QApplication::setFont(m_previous); }
    Q_DISABLE_COPY_MOVE(SystemFontSize)

private:
    QFont m_previous;
};

/// Another system palette while the object lives.
class SystemPalette {
public:
    explicit SystemPalette(const QPalette &palette) : m_previous(QApplication::palette())
    {
        QApplication::setPalette(palette);
    }
    ~SystemPalette() { QApplication::setPalette(m_previous); }
    Q_DISABLE_COPY_MOVE(SystemPalette)

private:
    QPalette m_previous;
};

} // namespace WindowTree
