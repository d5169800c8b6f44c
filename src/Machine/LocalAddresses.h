// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>

/// The addresses of the interfaces that are up, each with its interface's name and state.
QByteArray localAddresses();
