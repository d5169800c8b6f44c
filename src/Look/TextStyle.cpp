// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Look/TextStyle.h"

#include "Look/TextScale.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QGuiApplication>

using namespace Qt::StringLiterals;

namespace {

QFont scaled(QFont font, TextStyle style)
{
    const QFont system = QGuiApplication::font();
    // A font given in pixels knows no size in points itself.
    const double points = system.pointSizeF() > 0.0 ? system.pointSizeF() : QFontInfo(system).pointSizeF();
    font.setPointSizeF(points * textScale(style));
    return font;
}

bool isMonospaced(const QFont &font)
{
    const QFontMetricsF metrics(font);
    return qFuzzyCompare(metrics.horizontalAdvance(u'i'), metrics.horizontalAdvance(u'W'));
}

/// The desktop's fixed-width font. Some let the user choose any font for it.
QFont fixedFont()
{
    const QFont chosen = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    return isMonospaced(chosen) ? chosen : QFont(u"monospace"_s);
}

} // namespace

QFont textFont(TextStyle style)
{
    QFont font = scaled(QGuiApplication::font(), style);
    font.setWeight(style == TextStyle::Headline ? QFont::DemiBold : QFont::Normal);
    return font;
}

QFont monospacedTextFont(TextStyle style) { return scaled(fixedFont(), style); }
