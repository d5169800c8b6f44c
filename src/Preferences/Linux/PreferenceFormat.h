// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QSettings>
#include <QVariant>

/// How the preference file is written.
namespace PreferenceFormat {

QSettings::Format format();

/// What the store keeps for a text, a number or a flag, and back. Nothing where what is kept is of another kind.
QVariant stored(const QVariant &value);
QVariant value(const QVariant &stored);

} // namespace PreferenceFormat
