// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Look/TextStyle.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QGuiApplication>

using namespace Qt::StringLiterals;

namespace {

double scale(TextStyle style)
{
    switch (style) {
    case TextStyle::Title:
        return 1.7;
    case TextStyle::Title2:
        return 1.35;
    case TextStyle::Headline:
    case TextStyle::Body:
        return 1.0;
    case TextStyle::Subheadline:
        return 0.95;
    case TextStyle::Caption:
        return 0.9;
    case TextStyle::Caption2:
        return 0.85;
    }
    return 1.0;
}

QFont scaled(QFont font, TextStyle style)
{
    const QFont system = QGuiApplication::font();
    // A font given in pixels knows no size in points itself.
    const double points = system.pointSizeF() > 0.0 ? system.pointSizeF() : QFontInfo(system).pointSizeF();
    font.setPointSizeF(points * scale(style));
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
