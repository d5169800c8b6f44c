// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

/// How a host reads "_" in a menu label, where one underscore marks the access key.
enum class Underscores {
    EveryPair, ///< each "__" shows as "_"
    FirstPair, ///< only the first "__" does, all later ones show as they are
};

/// The text as the bus can carry it: NUL, which ends a string there, becomes the replacement character.
QString busText(QString text);

/// The text as a menu label that the host shows exactly as it was.
QString menuLabel(const QString &text, Underscores underscores);
