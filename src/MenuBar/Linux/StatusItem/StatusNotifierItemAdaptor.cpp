// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "MenuBar/Linux/StatusItem/StatusNotifierItemAdaptor.h"

#include "MenuBar/Linux/StatusItem/InstalledIcon.h"
#include "Process/Linux/ActivationToken.h"

#include <QDBusError>
#include <QGuiApplication>

using namespace Qt::StringLiterals;

namespace {

/// On Wayland no program can place a menu beside a panel: it becomes a window with a title bar, in the middle of the
/// screen. Plasma 5 opens the item's menu itself where Activate is refused; other hosts would open none.
bool hostDrawsRefusedMenu()
{
    return QGuiApplication::platformName().startsWith("wayland"_L1) &&
           qgetenv("XDG_CURRENT_DESKTOP").split(':').contains("KDE");
}

} // namespace

StatusNotifierItemAdaptor::StatusNotifierItemAdaptor(StatusNotifierItem &item)
    : QDBusAbstractAdaptor(&item), m_item(item)
{
}

// Id and title never change: hosts sort by them and remember what the user did with the item.
QString StatusNotifierItemAdaptor::id() const { return u"vantelo"_s; }

QString StatusNotifierItemAdaptor::title() const { return u"Vantelo"_s; }

QString StatusNotifierItemAdaptor::category() const { return u"ApplicationStatus"_s; }

QString StatusNotifierItemAdaptor::status() const { return u"Active"_s; }

QDBusObjectPath StatusNotifierItemAdaptor::menu() const { return QDBusObjectPath(StatusNotifierItem::menuPath()); }

QString StatusNotifierItemAdaptor::iconName() const { return installedIconName(m_item.label().dot); }

IconPixmaps StatusNotifierItemAdaptor::iconPixmap() const { return statusDotPixmaps(m_item.label().dot); }

QString StatusNotifierItemAdaptor::iconAccessibleDesc() const { return m_item.label().accessibleDescription; }

StatusToolTip StatusNotifierItemAdaptor::toolTip() const
{
    return {.iconName = {}, .iconPixmaps = {}, .title = m_item.label().whole(), .body = title()};
}

QString StatusNotifierItemAdaptor::label() const { return m_item.label().text; }

// Keeps the room of a busy account's day, so that the neighbours do not move with every digit.
QString StatusNotifierItemAdaptor::labelGuide() const { return u"88,888,888"_s; }

void StatusNotifierItemAdaptor::Activate(int x, int y)
{
    if (hostDrawsRefusedMenu())
        m_item.sendErrorReply(QDBusError::NotSupported, u"No menu can be placed here."_s);
    else
        Q_EMIT m_item.menuRequested({x, y});
}

void StatusNotifierItemAdaptor::SecondaryActivate(int, int) {}

void StatusNotifierItemAdaptor::ContextMenu(int x, int y) { Q_EMIT m_item.menuRequested({x, y}); }

void StatusNotifierItemAdaptor::Scroll(int, const QString &) {}

void StatusNotifierItemAdaptor::ProvideXdgActivationToken(const QString &token) { useActivationToken(token); }
