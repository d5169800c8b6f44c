// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QDBusConnection>

/// A connection to the session bus that belongs to one object alone and closes with it. Where there is no bus
/// it is simply not connected, and all that is sent goes nowhere.
class PrivateBus {
public:
    explicit PrivateBus(const QString &name);
    ~PrivateBus();
    Q_DISABLE_COPY_MOVE(PrivateBus)

    QDBusConnection &connection() { return m_connection; }

private:
    QString m_name;
    QDBusConnection m_connection;
};
