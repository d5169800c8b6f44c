// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Process/Linux/ActivationToken.h"

#include <QString>

void useActivationToken(const QString &token)
{
    // Where Qt looks for it, and clears it once used. With a text of any length there no program could be started.
    constexpr qsizetype longest = 1024;
    if (!token.isEmpty() && token.size() <= longest)
        qputenv("XDG_ACTIVATION_TOKEN", token.toUtf8());
}
