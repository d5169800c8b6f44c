// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

class QColor;
class QPainter;
class QRectF;

/// The small pictures that the system offers by name: "1.circle.fill" to "5.circle.fill", "checkmark.circle.fill"
/// and "xmark.circle.fill".
namespace SystemSymbol {

/// Draws the symbol in one colour into a square; what shows through it stays untouched. A name that does not
/// exist is a programming error and ends the program.
void paint(QPainter &painter, const QString &name, const QRectF &square, const QColor &tint);

} // namespace SystemSymbol
