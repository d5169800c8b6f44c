// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Machine/LocalNetwork.h"
#include "Machine/MachineTime.h"

/// Tells whether connections that were alive may have died unnoticed. It looks when it is asked and costs nothing
/// in between.
class NetworkWatch {
public:
    /// Whether since the last look, or since this was made, the machine has slept or come to stand elsewhere in the
    /// network.
    bool sawChange();

private:
    std::chrono::nanoseconds m_asleep = MachineTime::asleep();
    QByteArray m_network = localNetwork();
};
