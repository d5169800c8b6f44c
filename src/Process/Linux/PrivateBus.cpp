// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Process/Linux/PrivateBus.h"

PrivateBus::PrivateBus(const QString &name)
    : m_name(name), m_connection(QDBusConnection::connectToBus(QDBusConnection::SessionBus, name))
{
}

PrivateBus::~PrivateBus() { QDBusConnection::disconnectFromBus(m_name); }
