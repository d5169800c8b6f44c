// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "MenuBar/Linux/StatusItem/StatusDotImage.h"

#include <QTest>

#include <cmath>
#include <numbers>

class StatusDotImageTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void hasTheColourOfItsStatusAndADarkerRim_data()
    {
        QTest::addColumn<StatusDot>("dot");
        QTest::addColumn<QRgb>("fill");
        QTest::addColumn<QRgb>("rim");
        QTest::newRow("green") << StatusDot::Green << 0xff34c759 << 0xff1a7a35;
        QTest::newRow("red") << StatusDot::Red << 0xffff3b30 << 0xffb01710;
        QTest::newRow("white") << StatusDot::White << 0xffffffff << 0xff606066;
    }

    void hasTheColourOfItsStatusAndADarkerRim()
    {
        QFETCH(const StatusDot, dot);
        const QImage image = statusDotImage(dot, 64);
        QTEST(image.pixel(32, 32), "fill");
        QTEST(image.pixel(32, 14), "fill");
        QTEST(image.pixel(32, 9), "rim");
        QTEST(image.pixel(32, 7), "rim");
        QCOMPARE(qAlpha(image.pixel(32, 5)), 0);
    }

    void theRimIsAPixelAndAHalfAtLeast()
    {
        const QImage image = statusDotImage(StatusDot::White, 10); // the dot ends a pixel from the edge
        QCOMPARE(qRed(image.pixel(1, 5)), 0x60);
        QVERIFY(qRed(image.pixel(2, 5)) > 0x90);
        QVERIFY(qRed(image.pixel(2, 5)) < 0xd0);
        QCOMPARE(qRed(image.pixel(3, 5)), 0xff);
    }

    void isRoundAndSmoothAndClearOfTheEdge_data() { eachSize(); }

    void isRoundAndSmoothAndClearOfTheEdge()
    {
        QFETCH(const int, size);
        const QImage image = statusDotImage(StatusDot::Green, size);
        QCOMPARE(image.mirrored(true, false), image);
        QCOMPARE(image.mirrored(false, true), image);
        QCOMPARE(image.transformed(QTransform().rotate(90)), image);
        qreal area = 0;
        for (int y = 0; y < size; ++y) {
            QCOMPARE(qAlpha(image.pixel(0, y)), 0);
            for (int x = 0; x < size; ++x)
                area += qAlpha(image.pixel(x, y)) / 255.0;
        }
        const qreal circle = std::numbers::pi * std::pow(0.4 * size, 2);
        QVERIFY2(std::abs(area - circle) < circle / 100, qPrintable(QString::number(area / circle)));
    }

private:
    static void eachSize()
    {
        QTest::addColumn<int>("size");
        for (const int size : {16, 22, 24, 32, 48, 64})
            QTest::addRow("%d", size) << size;
    }
};

QTEST_GUILESS_MAIN(StatusDotImageTest)
#include "StatusDotImageTest.moc"
