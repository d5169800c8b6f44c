// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

/// A transfer that brought no whole body.
struct TransferError {
    QString description;    ///< a short sentence for the user; never holds an address
    bool cancelled = false; ///< by HttpSession::cancelAll(): the program ends and there is nobody left to tell

    static TransferError cancellation() { return {.description = QStringLiteral("Cancelled."), .cancelled = true}; }
};
