// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "MenuBar/Linux/Tray/TrayMenuBarExtra.h"

#include "MenuBar/Linux/StatusItem/StatusDotImage.h"

#include <array>

namespace {

QIcon iconOf(StatusDot dot)
{
    QIcon icon;
    for (const int size : std::array{16, 22, 24, 32, 48, 64})
        icon.addPixmap(QPixmap::fromImage(statusDotImage(dot, size)));
    return icon;
}

} // namespace

TrayMenuBarExtra::TrayMenuBarExtra()
{
    QObject::connect(&m_icon, &QSystemTrayIcon::activated, &m_menu, [this](QSystemTrayIcon::ActivationReason reason) {
        // A click soon after another counts as the second half of a double click.
        if (reason != QSystemTrayIcon::MiddleClick)
            m_menu.popUpBeside(m_icon.geometry());
    });
}

void TrayMenuBarExtra::setLabel(const MenuBarLabel &label)
{
    if (m_dot != label.dot)
        m_icon.setIcon(iconOf(label.dot));
    m_dot = label.dot;
    if (m_icon.toolTip() != label.whole())
        m_icon.setToolTip(label.whole());
    m_icon.show(); // only now: an icon without a picture is none
}
