// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Machine/NetworkWatch.h"

#include <utility>

bool NetworkWatch::sawChange()
{
    const bool slept = MachineTime::hasSleptSince(std::exchange(m_asleep, MachineTime::asleep()));
    const QByteArray before = std::exchange(m_network, localNetwork());
    return slept || m_network != before;
}
