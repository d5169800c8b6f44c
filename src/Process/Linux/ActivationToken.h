// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

class QString;

/// Gives the next window that is shown the right to come to the front, which Wayland grants by token only.
void useActivationToken(const QString &token);
