// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <optional>

/// What the changelog says of a version, as the plain text of an alert: headings without their marks, each entry on one
/// line. Of a version that it does not name yet it tells what is unreleased. Nothing where it says nothing.
std::optional<QString> releaseNotes(const QString &changelog, const QString &version);
