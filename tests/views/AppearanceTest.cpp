// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Contrast.h"
#include "Look/SystemSymbol.h"
#include "Look/TextStyle.h"
#include "Look/Theme.h"
#include "WindowTree.h"

#include <QFontInfo>
#include <QPainter>
#include <QTest>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

QImage drawn(const QString &name, int side, const QColor &tint)
{
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    SystemSymbol::paint(painter, name, image.rect(), tint);
    return image;
}

} // namespace

class AppearanceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void textIsReadableOnEveryPalette_data();
    void textIsReadableOnEveryPalette();
    void boxesAreLightlyTinted();
    void theStylesFormOneScaleRelativeToTheSystemFont();
    void aSystemFontInPixelsIsScaledToo();
    void everySymbolIsADiscOfItsTintWithACutOut_data();
    void everySymbolIsADiscOfItsTintWithACutOut();
    void noTwoSymbolsAreAlike();
};

void AppearanceTest::textIsReadableOnEveryPalette_data()
{
    QTest::addColumn<QPalette>("palette");
    QTest::newRow("the platform's") << QApplication::palette();
    QTest::newRow("light grey") << QPalette(QColor(0xef, 0xef, 0xef));
    QTest::newRow("white") << QPalette(Qt::white);
    QTest::newRow("dark") << WindowTree::darkPalette();
    QTest::newRow("black") << QPalette(Qt::black);
}

void AppearanceTest::textIsReadableOnEveryPalette()
{
    QFETCH(const QPalette, palette);
    const QColor window = palette.color(QPalette::Window);
    using Theme::Ink;
    for (const Ink ink : {Ink::Primary, Ink::Secondary, Ink::Link, Ink::Red, Ink::Green}) {
        const double ratio = contrast(Theme::colour(ink, palette), window);
        QVERIFY2(ratio >= 4.5, qPrintable(u"ink %1: %2"_s.arg(static_cast<int>(ink)).arg(ratio)));
    }
    const double share = contrast(Theme::colour(Ink::Secondary, palette), window) /
                         contrast(Theme::colour(Ink::Primary, palette), window);
    QVERIFY2(share < 0.7, qPrintable(QString::number(share))); // weaker at a glance
}

void AppearanceTest::boxesAreLightlyTinted()
{
    const QPalette palette(QColor(0xef, 0xef, 0xef));
    for (const Theme::Box box : {Theme::Box::Warning, Theme::Box::Tip}) {
        QCOMPARE(Theme::boxColours(box, palette).fill.alpha(), qRound(0.1 * 255));
        QCOMPARE(Theme::boxColours(box, palette).stroke.alpha(), qRound(0.3 * 255));
    }
    const Theme::BoxColours code = Theme::boxColours(Theme::Box::Code, palette);
    QCOMPARE(code.fill.rgb(), palette.color(QPalette::Window).rgb());
    QCOMPARE(code.fill.alpha(), qRound(0.5 * 255));
    QCOMPARE(code.stroke.alpha(), qRound(0.3 * 255));
}

void AppearanceTest::theStylesFormOneScaleRelativeToTheSystemFont()
{
    for (const double points : {8.0, 11.0, 20.0}) {
        const WindowTree::SystemFontSize size(points);
        const auto pointsOf = [](TextStyle style) { return textFont(style).pointSizeF(); };
        QCOMPARE(pointsOf(TextStyle::Body), points);
        QCOMPARE(pointsOf(TextStyle::Headline), points);
        QVERIFY(pointsOf(TextStyle::Title) > pointsOf(TextStyle::Title2));
        QVERIFY(pointsOf(TextStyle::Title2) > pointsOf(TextStyle::Body));
        QVERIFY(pointsOf(TextStyle::Body) > pointsOf(TextStyle::Subheadline));
        QVERIFY(pointsOf(TextStyle::Subheadline) > pointsOf(TextStyle::Caption));
        QVERIFY(pointsOf(TextStyle::Caption) > pointsOf(TextStyle::Caption2));
        QCOMPARE(monospacedTextFont(TextStyle::Caption).pointSizeF(), pointsOf(TextStyle::Caption));
        QVERIFY(QFontInfo(monospacedTextFont(TextStyle::Caption)).fixedPitch());
    }
    QVERIFY(textFont(TextStyle::Headline).weight() > textFont(TextStyle::Body).weight());
}

void AppearanceTest::aSystemFontInPixelsIsScaledToo()
{
    const WindowTree::SystemFontSize restored(10.0);
    QFont font = QApplication::font();
    font.setPixelSize(40);
    QApplication::setFont(font);
    const int body = QFontInfo(textFont(TextStyle::Body)).pixelSize();
    QVERIFY2(std::abs(body - 40) <= 1, qPrintable(QString::number(body)));
}

void AppearanceTest::everySymbolIsADiscOfItsTintWithACutOut_data()
{
    QTest::addColumn<QString>("name");
    for (const QString &kind : {u"1"_s, u"2"_s, u"3"_s, u"4"_s, u"5"_s, u"xmark"_s, u"checkmark"_s})
        QTest::newRow(qPrintable(kind)) << kind + u".circle.fill"_s;
}

void AppearanceTest::everySymbolIsADiscOfItsTintWithACutOut()
{
    QFETCH(const QString, name);
    for (const int side : {16, 32, 128}) {
        const QImage image = drawn(name, side, Qt::red);
        QCOMPARE(image.pixelColor(side / 8, side / 2).rgb(), QColor(Qt::red).rgb());
        QCOMPARE(image.pixelColor(0, 0).alpha(), 0);
        int untouched = 0;
        for (int y = side / 4; y < side * 3 / 4; ++y)
            for (int x = side / 4; x < side * 3 / 4; ++x)
                untouched += image.pixelColor(x, y).alpha() < 128;
        QVERIFY2(untouched > side * side / 4 / 20, qPrintable(QString::number(untouched)));
    }
}

void AppearanceTest::noTwoSymbolsAreAlike()
{
    QList<QImage> seen;
    for (const QString &kind : {u"1"_s, u"2"_s, u"3"_s, u"4"_s, u"5"_s, u"xmark"_s, u"checkmark"_s}) {
        const QImage image = drawn(kind + u".circle.fill"_s, 64, Qt::black);
        QVERIFY(!seen.contains(image));
        seen.append(image);
    }
}

QTEST_MAIN(AppearanceTest)
#include "AppearanceTest.moc"
