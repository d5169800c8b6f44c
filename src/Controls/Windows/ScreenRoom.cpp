// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Controls/Windows/ScreenRoom.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>

namespace {

// Nobody tells the height of a title bar before the window is shown; desktops have them up to this.
constexpr int titleBar = 40;
// Wayland does not tell what panels take, nor X11 where there are several screens.
constexpr int untoldPanel = 48;

} // namespace

QScreen *ScreenRoom::pointed()
{
    QScreen *const pointed = QGuiApplication::screenAt(QCursor::pos());
    return pointed ? pointed : QGuiApplication::primaryScreen();
}

QRect ScreenRoom::forContent(const QScreen *screen)
{
    QRect room = screen->availableGeometry();
    if (room == screen->geometry())
        room.adjust(0, untoldPanel / 2, 0, -untoldPanel / 2);
    return room.adjusted(0, titleBar, 0, 0);
}
