// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Controls/Boxes/Divider.h"

#include "Controls/AccessibleRole.h"
#include "Look/Theme.h"

#include <QPainter>

Divider::Divider()
{
    AccessibleRole::give(this, QAccessible::Separator);
    setFixedHeight(1);
}

void Divider::paintEvent(QPaintEvent *) { QPainter(this).fillRect(rect(), Theme::dividerColour(palette())); }
