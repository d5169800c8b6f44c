// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include "MenuBar/MenuBarExtra.h"

#include <QByteArray>
#include <QDBusArgument>
#include <QList>
#include <QString>

/// One size of an icon, "(iiay)" on the bus: ARGB32 with straight alpha in network byte order.
struct IconPixmap {
    int width = 0;
    int height = 0;
    QByteArray bytes;
};
using IconPixmaps = QList<IconPixmap>;

/// "(sa(iiay)ss)" on the bus.
struct StatusToolTip {
    QString iconName;
    IconPixmaps iconPixmaps;
    QString title;
    QString body;
};

QDBusArgument &operator<<(QDBusArgument &argument, const IconPixmap &pixmap);
const QDBusArgument &operator>>(const QDBusArgument &argument, IconPixmap &pixmap);
QDBusArgument &operator<<(QDBusArgument &argument, const StatusToolTip &toolTip);
const QDBusArgument &operator>>(const QDBusArgument &argument, StatusToolTip &toolTip);

/// Makes the types known to Qt's D-Bus binding.
void registerStatusNotifierTypes();

/// The dot in every size that hosts ask for, drawn once for each dot.
const IconPixmaps &statusDotPixmaps(StatusDot dot);
