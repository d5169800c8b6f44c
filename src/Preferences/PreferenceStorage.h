// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QSettings>
#include <QVariant>

#include <memory>

/// How the system keeps the preferences.
namespace PreferenceStorage {

/// The program's own domain.
std::unique_ptr<QSettings> open();

/// Brings memory and disk together. What it makes on disk is the user's alone from its first byte.
void sync(QSettings &settings);

/// What is stored for a text, a number or a flag, and back. Invalid where what is stored is of another kind.
QVariant stored(const QVariant &value);
QVariant value(const QVariant &stored);

} // namespace PreferenceStorage
