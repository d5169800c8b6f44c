// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QStringList>

/// Ends a test, which ctest then tells as "not run", where one of these programs is not installed; in CI it fails. To
/// be asked first of all, while nothing has been started that would stay behind.
void requirePrograms(const QStringList &programs);

/// The same where StatusHost lacks one of its libraries.
void requireStatusHost();
