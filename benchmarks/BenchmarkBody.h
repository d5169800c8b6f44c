// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>

/// A body of insights with so many actions, and every other figure; about 60 bytes an action.
QByteArray bodyWithActions(qsizetype count);

/// The largest body that is no failed transfer yet: full of actions, to the last that fits.
QByteArray largestBody();
