// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Http/InheritedSockets.h"

// The system starts programs itself, and they inherit nothing.
void keepSocketsToOurselves() {}
