// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

/// Writes one line "Vantelo: <message>" to standard output, at once. Never pass an address or anything that
/// may hold the access token; a line break in the message becomes a blank.
void logLine(const QString &message);
