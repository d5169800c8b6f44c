// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Look/Theme.h"
#include "PaintedPixels.h"
#include "WindowTree.h"

#include <QPainter>
#include <QTest>

#include <functional>
#include <optional>

/// How the looks of a window are judged: its picture is compared with the colour, the font or the shape that something
/// in it is to have.
namespace Looks {

using namespace Qt::StringLiterals;

inline QPalette lightPalette() { return {QColor(0xef, 0xef, 0xef)}; }

inline void unchangingDesktops()
{
    QTest::addColumn<QPalette>("opened");
    QTest::addColumn<QPalette>("seen");
    QTest::newRow("light") << lightPalette() << lightPalette();
    QTest::newRow("dark") << WindowTree::darkPalette() << WindowTree::darkPalette();
}

/// A row for each desktop that the windows are looked at on.
inline void desktops()
{
    unchangingDesktops();
    QTest::newRow("turned dark") << lightPalette() << WindowTree::darkPalette();
}

/// The row's desktop while the object lives.
class Desktop {
public:
    explicit Desktop(const std::function<void()> &openWindow)
    {
        QFETCH(const QPalette, opened);
        QFETCH(const QPalette, seen);
        m_opened.emplace(opened);
        openWindow();
        m_seen.emplace(seen);
        QCoreApplication::processEvents(); // this tells the widgets
    }

private:
    std::optional<WindowTree::SystemPalette> m_opened;
    std::optional<WindowTree::SystemPalette> m_seen;
};

inline QColor ground() { return QApplication::palette().color(QPalette::Window); }

inline QColor colour(Theme::Ink ink) { return Theme::colour(ink, QApplication::palette()); }

/// What is wrong with the colour of marks on this ground. Thin marks are paler than their colour, and none is stronger.
inline QString colourFaults(const QImage &picture, const QColor &ground, const QColor &expected)
{
    const QColor mark = PaintedPixels::mark(picture, ground);
    const double share = contrast(mark, ground) / contrast(expected, ground);
    const bool isGrey = expected.hslSaturation() < 60;
    const int turn = std::abs(mark.hslHue() - expected.hslHue());
    if (share >= 0.65 && share <= 1.02 && (isGrey || (mark.hslSaturation() > 60 && std::min(turn, 360 - turn) <= 12)))
        return {};
    return u"painted in %1 for %2. "_s.arg(mark.name(), expected.name());
}

struct Text {
    QString text;
    QFont font;
    QColor colour;
};

/// The extent in pixels of a text, wrapped if need be, on this ground in a picture like this one.
inline QSize textExtent(const Text &text, const QImage &picture, const QColor &ground)
{
    QPixmap drawn(picture.size());
    drawn.setDevicePixelRatio(picture.devicePixelRatio());
    drawn.fill(ground);
    {
        QPainter painter(&drawn);
        painter.setFont(text.font);
        painter.setPen(text.colour);
        painter.drawText(QRectF({}, drawn.deviceIndependentSize()), Qt::AlignLeft | Qt::TextWordWrap, text.text);
    }
    return PaintedPixels::ink(drawn.toImage(), ground).size();
}

/// What is wrong with a text in a picture of it alone: its colour or its extent, which tells the font's family, size
/// and weight.
inline QString textFaults(const QImage &picture, const Text &expected)
{
    const QColor ground = PaintedPixels::ground(picture);
    const QSize extent = PaintedPixels::ink(picture, ground).size();
    const QSize due = textExtent(expected, picture, ground);
    QString faults = colourFaults(picture, ground, expected.colour);
    if (std::abs(extent.width() - due.width()) > 1 || std::abs(extent.height() - due.height()) > 1)
        faults += u"%1 × %2 pixels for %3 × %4. "_s.arg(extent.width())
                      .arg(extent.height())
                      .arg(due.width())
                      .arg(due.height());
    return faults.isEmpty() ? faults : expected.text + u": "_s + faults;
}

/// What is wrong with a box that fills the picture: its colours, a stroke of one point, round corners of eight.
inline QString boxFaults(const QImage &box, const QColor &ground, const Theme::BoxColours &colours)
{
    const QColor fill = PaintedPixels::over(colours.fill, ground);
    const QColor line = PaintedPixels::over(colours.stroke, ground);
    const QColor filledLine = PaintedPixels::over(colours.stroke, fill);
    const int middle = qRound(box.height() / box.devicePixelRatio() / 2.0);
    struct Place {
        const char *name;
        int x;
        int y;
        QColor colour;
        QColor orUpTo;
    };
    const Place places[] = {
        {"the corner", 0, 0, ground, ground},
        {"inside the corner", 1, 1, ground, ground},
        {"beside the corner", 3, 0, ground, ground},
        {"the last corner", -1, -1, ground, ground},
        {"the line above, near its beginning", 10, 0, line, filledLine}, // the fill reaches to its middle
        {"the line to the left", 0, middle, line, filledLine},
        {"the line to the right", -1, middle, line, filledLine},
        {"the line below", 12, -1, line, filledLine},
        {"inside the line", 1, middle, fill, fill},
        {"the ground", 4, middle, fill, fill},
    };
    QString faults;
    for (const auto &[name, x, y, one, other] : places)
        if (const QColor painted = PaintedPixels::at(box, x, y); !PaintedPixels::isBetween(painted, one, other))
            faults += u"%1: %2 for %3. "_s.arg(QLatin1StringView(name), painted.name(), one.name());
    return faults;
}

} // namespace Looks
