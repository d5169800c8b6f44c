// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Machine/OnlineWatch.h"

#include <QDBusConnection>

/// Asks NetworkManager, over a connection to the system bus that is closed with this.
class NetworkManagerWatch : public OnlineWatch {
    Q_OBJECT

public:
    NetworkManagerWatch();
    ~NetworkManagerWatch() override;
    Q_DISABLE_COPY_MOVE(NetworkManagerWatch)

private Q_SLOTS:
    void judge(uint state);

private:
    void ask();

    QDBusConnection m_connection;
};
