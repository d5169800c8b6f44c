// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>

/// JSON written with single quotes, for tests that are read more often than they are written.
inline QByteArray json(const char *text) { return QByteArray(text).replace('\'', '"'); }
