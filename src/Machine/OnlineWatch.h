// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>

#include <memory>

/// Waits for the system to say that the machine is online. Chosen at link time, like MachineTime. It costs something
/// while it lives, so it lives while somebody waits.
class OnlineWatch : public QObject {
    Q_OBJECT

public:
    static std::unique_ptr<OnlineWatch> create();

Q_SIGNALS:
    /// The machine is online, or nobody here can tell. Comes on a later turn of the event loop, maybe more than once.
    void online();
};
