// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "MenuBar/MenuBarExtra.h"

#include "MenuBar/Linux/BusMenu/DBusMenu.h"
#include "MenuBar/Linux/StatusItem/StatusNotifierHost.h"
#include "MenuBar/Linux/StatusItem/StatusNotifierItem.h"
#include "MenuBar/Linux/Tray/RowsMenu.h"
#include "MenuBar/Linux/Tray/TrayMenuBarExtra.h"
#include "Process/Linux/PrivateBus.h"

#include <QCursor>
#include <QGuiApplication>
#include <QTimer>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// Where the menu goes: to the place that the host names, in the screen's own pixels. A host that does not know
/// it says 0, and MATE's counts from the corner of its applet, so a place far from the pointer is not believed.
QPoint placeOf(const QPoint &named)
{
    constexpr int farAway = 200; // more than a click on a panel is away from the panel's edge
    const QPoint place = named / qGuiApp->devicePixelRatio();
    const QPoint pointer = QCursor::pos();
    const bool pointerIsKnown = QGuiApplication::platformName() == "xcb"_L1; // Wayland keeps it to itself
    const bool wrong = pointerIsKnown && (place - pointer).manhattanLength() > farAway;
    return named.isNull() || wrong ? pointer : place;
}

/// The item in the status area; where no status area is, an icon in the legacy tray.
class StatusAreaExtra : public MenuBarExtra {
public:
    StatusAreaExtra();

    void setLabel(const MenuBarLabel &label) override;
    void setRows(const MenuRows &rows) override;

private:
    void followHost();
    void showTraySoon();
    void showTray();
    void popUp(const QPoint &position);

    PrivateBus m_bus{u"vantelo-status-item"_s};
    StatusNotifierItem m_item{m_bus.connection()};
    DBusMenu m_menu{m_bus.connection(), StatusNotifierItem::menuPath()};
    StatusNotifierHost m_host{m_bus.connection(), StatusNotifierItem::path()};
    MenuBarLabel m_label;
    MenuRows m_rows;
    std::unique_ptr<RowsMenu> m_popUp; ///< once a host has asked for it
    std::unique_ptr<TrayMenuBarExtra> m_tray;
    QTimer m_untilTray;
};

StatusAreaExtra::StatusAreaExtra()
{
    QObject::connect(
        &m_item, &StatusNotifierItem::menuRequested, &m_item, [this](const QPoint &at) { popUp(at); },
        Qt::QueuedConnection);
    QObject::connect(&m_host, &StatusNotifierHost::changed, &m_host, [this] { followHost(); });
    QObject::connect(&m_host, &StatusNotifierHost::itemConfirmed, &m_item, &StatusNotifierItem::repeatTexts);
    // Long enough for a panel that restarts, so that the user does not see both.
    m_untilTray.setSingleShot(true);
    m_untilTray.setInterval(3s);
    QObject::connect(&m_untilTray, &QTimer::timeout, &m_host, [this] { showTray(); });
    if (!m_bus.connection().isConnected())
        showTraySoon();
}

void StatusAreaExtra::setLabel(const MenuBarLabel &label)
{
    m_label = label;
    m_item.setLabel(label);
    if (m_tray)
        m_tray->setLabel(label);
}

void StatusAreaExtra::setRows(const MenuRows &rows)
{
    m_rows = rows;
    m_menu.setRows(rows);
    if (m_popUp)
        m_popUp->setRows(rows);
    if (m_tray)
        m_tray->setRows(rows);
}

void StatusAreaExtra::followHost()
{
    m_menu.setUnderscores(m_host.isGnomeShell() ? Underscores::FirstPair : Underscores::EveryPair);
    if (m_host.isPresent()) {
        m_untilTray.stop();
        m_tray.reset();
    } else {
        showTraySoon();
    }
}

void StatusAreaExtra::showTraySoon()
{
    // Legacy trays are X11's; elsewhere Qt's tray icon would only complain.
    if (QGuiApplication::platformName() == "xcb"_L1 && !m_tray && !m_untilTray.isActive())
        m_untilTray.start();
}

void StatusAreaExtra::showTray()
{
    m_tray = std::make_unique<TrayMenuBarExtra>();
    m_tray->setRows(m_rows);
    m_tray->setLabel(m_label);
}

void StatusAreaExtra::popUp(const QPoint &position)
{
    if (!m_popUp)
        m_popUp = std::make_unique<RowsMenu>();
    m_popUp->setRows(m_rows);
    m_popUp->popUpBeside({placeOf(position), QSize(0, 0)});
}

} // namespace

std::unique_ptr<MenuBarExtra> MenuBarExtra::create() { return std::make_unique<StatusAreaExtra>(); }
