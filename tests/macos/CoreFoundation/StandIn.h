// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QVariant>

/// Plays the few calls of Core Foundation that the program makes, on any system. What it cannot know: whether the real
/// ones behave as their documentation says, when the system's own server writes its files, what a profile of an
/// administrator's imposes.
namespace CoreFoundation {

/// What "defaults read" and "defaults write" would see and do in a domain of the user's. Kinds: text, flag, int for a
/// whole number, double; any other kind of value stands for a kind that no preference has. An unsigned number stands
/// for one beyond 64 bits.
QVariant stored(const QString &domain, const QString &key);
void write(const QString &domain, const QString &key, const QVariant &value);
/// Forgets every domain.
void clear();

/// No write reaches the disk from now on, or does again.
void setDiskFails(bool fails);

/// Objects that somebody holds, those on the disk left out.
int objectsInUse();

} // namespace CoreFoundation
