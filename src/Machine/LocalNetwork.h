// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>

/// Where the machine stands in the network, as bytes for comparison alone: they change when an address comes or goes
/// or, where the system tells, a route. Chosen at link time, like MachineTime.
QByteArray localNetwork();
