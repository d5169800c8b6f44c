// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QColor>

#include <algorithm>
#include <cmath>

/// Relative luminance as accessibility guidelines define it.
inline double luminance(const QColor &colour)
{
    const auto linear = [](double c) { return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4); };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

/// The ratio that guidelines ask to be 4.5 for text.
inline double contrast(const QColor &one, const QColor &other)
{
    const double a = luminance(one) + 0.05;
    const double b = luminance(other) + 0.05;
    return std::max(a, b) / std::min(a, b);
}
