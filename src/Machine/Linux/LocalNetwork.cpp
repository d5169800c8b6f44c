// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Machine/LocalNetwork.h"

#include "Machine/LocalAddresses.h"

#include <QFile>

using namespace Qt::StringLiterals;

QByteArray localNetwork()
{
    // Another network may give the same address, but hardly by the same router. The table of IPv6 is of no use here: it
    // counts its uses. There the addresses differ.
    QFile routes(u"/proc/net/route"_s);
    return localAddresses() + (routes.open(QIODevice::ReadOnly) ? routes.readAll() : QByteArray());
}
