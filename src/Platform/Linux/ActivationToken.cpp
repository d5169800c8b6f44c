// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Platform/Linux/ActivationToken.h"

#include <QString>

void useActivationToken(const QString &token)
{
    // Where Qt looks for it, and clears it once used.
    if (!token.isEmpty())
        qputenv("XDG_ACTIVATION_TOKEN", token.toUtf8());
}
