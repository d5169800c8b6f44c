// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "MenuBar/Linux/StatusItem/InstalledIcon.h"

#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace {

QString iconName(StatusDot dot)
{
    switch (dot) {
    case StatusDot::Green:
        return u"app.vantelo.Vantelo-green"_s;
    case StatusDot::Red:
        return u"app.vantelo.Vantelo-red"_s;
    case StatusDot::White:
        break;
    }
    return u"app.vantelo.Vantelo-white"_s;
}

} // namespace

QString installedIconName(StatusDot dot)
{
    // Where hosts look, too. Not asked once and for all: the package may come or go meanwhile.
    const QString name = iconName(dot);
    const QString file = u"icons/hicolor/scalable/status/%1.svg"_s.arg(name);
    return QStandardPaths::locate(QStandardPaths::GenericDataLocation, file).isEmpty() ? QString() : name;
}
