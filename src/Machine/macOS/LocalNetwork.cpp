// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Machine/LocalNetwork.h"

#include "Machine/LocalAddresses.h"

QByteArray localNetwork() { return localAddresses(); }
