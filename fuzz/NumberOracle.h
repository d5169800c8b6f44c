// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <cstdint>
#include <optional>

/// The rules of PlainNumber once more, written another way: the two must agree on every text.
namespace NumberOracle {

std::optional<std::int64_t> whole(const QString &text);
std::optional<double> real(const QString &text);

/// The same number to the bit, or not-a-number both.
bool same(double a, double b);

} // namespace NumberOracle
