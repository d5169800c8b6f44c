// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <cstdint>
#include <optional>

/// Numbers in plain text, read and written the same way whatever the user's locale is.
namespace PlainNumber {

/// Reads an optional "+" or "-" and ASCII digits. Nothing for all other texts and beyond 64 bits.
std::optional<std::int64_t> whole(const QString &text);

/// Reads what C's strtod reads in the C locale: decimal and hexadecimal, exponents, infinity and not-a-number.
/// Nothing unless the whole text is consumed; leading white space and an empty text are refused.
std::optional<double> real(const QString &text);

/// Writes exactly what printf("%.2f") writes in the C locale.
QString withTwoDecimals(double value);

} // namespace PlainNumber
