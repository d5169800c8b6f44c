// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

/// Keeps the sockets that are open by now from the programs that this one starts, the browser above all: libcurl lets
/// them be inherited.
void keepSocketsToOurselves();
