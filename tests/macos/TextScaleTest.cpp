// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Look/TextScale.h"

#include <QTest>

namespace {

constexpr double systemFont = 13.0;

} // namespace

/// The sizes of text on macOS, in points.
class TextScaleTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void textIsAsLargeAsTheSystemsOwn()
    {
        QCOMPARE(textScale(TextStyle::Title) * systemFont, 22.0);
        QCOMPARE(textScale(TextStyle::Title2) * systemFont, 17.0);
        QCOMPARE(textScale(TextStyle::Headline) * systemFont, 13.0);
        QCOMPARE(textScale(TextStyle::Subheadline) * systemFont, 11.0);
        QCOMPARE(textScale(TextStyle::Body) * systemFont, 13.0);
        QCOMPARE(textScale(TextStyle::Caption) * systemFont, 10.0);
        QCOMPARE(textScale(TextStyle::Caption2) * systemFont, 10.0);
    }
};

QTEST_GUILESS_MAIN(TextScaleTest)
#include "TextScaleTest.moc"
