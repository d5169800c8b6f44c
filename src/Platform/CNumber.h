// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>

#include <optional>

/// Numbers as the C library reads and writes them in the C locale, whatever the user's locale is.
namespace CNumber {

/// Reads what C's strtod reads: decimal and hexadecimal, exponents, infinity and not-a-number.
/// Nothing unless the whole text is consumed; leading white space and an empty text are refused.
std::optional<double> read(const QByteArray &text);

/// Writes exactly what printf("%.2f") writes.
QString withTwoDecimals(double value);

} // namespace CNumber
