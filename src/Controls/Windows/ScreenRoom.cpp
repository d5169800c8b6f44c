// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Controls/Windows/ScreenRoom.h"

#include <QCursor>
#include <QGuiApplication>
#include <QMargins>
#include <QScreen>
#include <QStyle>

#include <algorithm>

namespace {

// Nobody tells what the frame takes before the window is shown; on the desktops it is up to this.
constexpr QMargins frame(4, 40, 4, 4);
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
        room.adjust(0, untoldPanel, 0, 0);
    return room.marginsRemoved(frame);
}

QPoint ScreenRoom::centre(const QSize &content, const QScreen *screen)
{
    const QRect area = screen->availableGeometry();
    const QPoint place = QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, content, area).topLeft();
    const int lowest = area.bottom() + 1 - frame.bottom() - content.height() - frame.top();
    return {place.x(), std::min(place.y(), lowest)};
}
