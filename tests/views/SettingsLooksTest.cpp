// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Look/TextStyle.h"
#include "Looks.h"
#include "SettingsFixture.h"

/// How Settings looks, measured in what it paints, on a light and on a dark desktop. ctest runs it at 200 % too.
class SettingsLooksTest : public SettingsFixture {
    Q_OBJECT

private Q_SLOTS:
    void textsHaveTheirFontsAndColours_data() { Looks::desktops(); }
    void textsHaveTheirFontsAndColours()
    {
        const Looks::Desktop desktop([this] { openWithResult(someFigures); });
        QFont bold = textFont(TextStyle::Title2);
        bold.setWeight(QFont::Bold);
        const QColor secondary = Looks::colour(Theme::Ink::Secondary);
        const QList<Looks::Text> texts{
            {u"Vantelo Settings"_s, bold, Looks::colour(Theme::Ink::Primary)},
            {u"Connect your Ads account to monitor impressions."_s, textFont(TextStyle::Subheadline), secondary},
            {u"Access Token"_s, textFont(TextStyle::Caption), secondary},
            {u"Ad Account ID"_s, textFont(TextStyle::Caption), secondary},
            {u"Stale threshold (minutes)"_s, textFont(TextStyle::Body), Looks::colour(Theme::Ink::Primary)},
            {u"Refreshes every 10 minutes"_s, textFont(TextStyle::Caption2), secondary},
            {lastRefresh()->text(), textFont(TextStyle::Caption2), secondary},
        };
        QString faults;
        for (const Looks::Text &text : texts)
            faults += Looks::textFaults(picture(label(text.text)), text);
        for (const QString &title : {u"API Credentials"_s, u"Preferences"_s}) {
            const QRect above(0, 0, box(title)->width(), box(title)->contentsRect().top());
            faults += Looks::textFaults(PaintedPixels::part(picture(box(title)), above),
                {title, textFont(TextStyle::Body), Looks::colour(Theme::Ink::Primary)});
        }
        QVERIFY2(faults.isEmpty(), qPrintable(faults));
    }

    void theBoxesHoldTheirFields_data() { Looks::desktops(); }
    void theBoxesHoldTheirFields()
    {
        const Looks::Desktop desktop([this] { openWithCredentials(); });
        const QColor ground = Looks::ground();
        const Theme::BoxColours colours = Theme::boxColours(Theme::Box::Group, QApplication::palette());
        for (const QString &title : {u"API Credentials"_s, u"Preferences"_s}) {
            QCOMPARE(Looks::boxFaults(drawnBox(title), ground, colours), QString());
            QCOMPARE(box(title)->mapTo(window(), QPoint()).x(), 24);
            QCOMPARE(box(title)->width(), window()->width() - 2 * 24);
            const QRect line = PaintedPixels::ink(drawnBox(title), ground, 1.25); // to be seen at all
            QCOMPARE(line, drawnBox(title).rect());
        }
        const QRect inside = box(u"API Credentials"_s)->contentsRect().adjusted(8, 8, -8, -8);
        const QRect fields = place(label(u"Access Token"_s), box(u"API Credentials"_s)) |
                             place(tokenField(), box(u"API Credentials"_s)) |
                             place(accountField(), box(u"API Credentials"_s));
        QCOMPARE(fields, inside);
        const QWidget *const preferences = box(u"Preferences"_s);
        const QLabel *const threshold = label(u"Stale threshold (minutes)"_s);
        QCOMPARE(place(threshold, preferences) | place(threshold->buddy(), preferences),
            preferences->contentsRect().adjusted(8, 8, -8, -8));
    }

    void theFieldsHaveFrames_data() { Looks::desktops(); }
    void theFieldsHaveFrames()
    {
        const Looks::Desktop desktop([this] { openWithCredentials(); });
        button(u"Setup Guide"_s)->setFocus(); // a field with the focus is framed in any case
        const QColor box =
            PaintedPixels::over(Theme::boxColours(Theme::Box::Group, QApplication::palette()).fill, Looks::ground());
        for (const QLineEdit *field : {tokenField(), accountField()}) {
            const QImage painted = picture(field);
            const QColor inside = PaintedPixels::at(painted, -20, field->height() / 2);
            bool framed = false;
            for (int x = 0; x < 3; ++x) {
                const QColor frame = PaintedPixels::at(painted, x, field->height() / 2);
                framed = framed || (!PaintedPixels::isNear(frame, inside) && !PaintedPixels::isNear(frame, box));
            }
            QVERIFY2(framed, qPrintable(field->accessibleName()));
        }
    }

    void theOutcomeOfATestIsRedOrGreen_data()
    {
        QTest::addColumn<QPalette>("opened");
        QTest::addColumn<QPalette>("seen");
        QTest::addColumn<QByteArray>("answer");
        QTest::addColumn<QString>("message");
        QTest::addColumn<bool>("isRed");
        const QPalette light = Looks::lightPalette();
        const QPalette dark = WindowTree::darkPalette();
        const QString error = u"Error validating access token"_s;
        const QString success = u"Connected successfully!"_s;
        QTest::newRow("failure, light") << light << light << apiError << error << true;
        QTest::newRow("failure, turned dark") << light << dark << apiError << error << true;
        QTest::newRow("success, dark") << dark << dark << someFigures << success << false;
        QTest::newRow("success, turned light") << dark << light << someFigures << success << false;
    }

    void theOutcomeOfATestIsRedOrGreen()
    {
        QFETCH(const QByteArray, answer);
        QFETCH(const QString, message);
        QFETCH(const bool, isRed);
        const Looks::Desktop desktop([&] { openWithResult(answer); });
        const QColor colour = Looks::colour(isRed ? Theme::Ink::Red : Theme::Ink::Green);
        const int hue = isRed ? 0 : 120;
        QVERIFY(std::min(std::abs(colour.hslHue() - hue), 360 - colour.hslHue() + hue) < 25);
        const QImage row = picture(result());
        const int side = QFontMetrics(textFont(TextStyle::Caption)).height();

        const QImage symbol = PaintedPixels::part(row, {0, 0, side, side});
        QVERIFY(PaintedPixels::isNear(PaintedPixels::at(symbol, side / 8, side / 2), colour));
        const QRect disc = PaintedPixels::ink(symbol, Looks::ground());
        QVERIFY2(disc.width() >= symbol.width() - 2 && disc.height() >= symbol.height() - 2, "no disc");
        const QColor centre = PaintedPixels::at(symbol, side / 2, side / 2);
        if (isRed) // the cross is cut out of it, the check mark passes below its centre
            QVERIFY(!PaintedPixels::isNear(centre, colour));

        const QImage text = PaintedPixels::part(row, {side + 2, 0, result()->width() - side - 2, side});
        QCOMPARE(Looks::textFaults(text, {message, textFont(TextStyle::Caption), colour}), QString());
        const double gap = PaintedPixels::ink(text, Looks::ground()).left() / text.devicePixelRatio() + 2;
        QVERIFY2(gap >= 4 && gap <= 12, qPrintable(QString::number(gap)));
    }

    void belowTheOutcomeOfATestThereIsAGap_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::newRow("failure") << apiError;
        QTest::newRow("success") << someFigures;
    }

    void belowTheOutcomeOfATestThereIsAGap()
    {
        QFETCH(const QByteArray, answer);
        const WindowTree::SystemFontSize size(26.0); // the form is full: nothing is between the outcome and the footer
        openWithResult(answer);
        QCoreApplication::processEvents();
        const QLabel *const footer = label(u"Refreshes every 10 minutes"_s);
        const int height = footer->mapTo(window(), QPoint()).y() - result()->mapTo(window(), QPoint()).y();
        QCOMPARE(height % result()->fontMetrics().lineSpacing(), 4); // one line or two
    }

    void buttonsAndFooterStandAtBothEnds_data() { Looks::desktops(); }
    void buttonsAndFooterStandAtBothEnds()
    {
        const Looks::Desktop desktop([this] { openWithResult(someFigures); });
        const double ratio = window()->devicePixelRatioF();
        const auto inkOfRow = [&](const QWidget *row) {
            const QRect line(24, row->mapTo(window(), QPoint()).y(), window()->width() - 2 * 24, row->height());
            return PaintedPixels::part(window()->grab().toImage(), line);
        };
        const QImage footer = inkOfRow(label(u"Refreshes every 10 minutes"_s));
        const QRect texts = PaintedPixels::ink(footer, Looks::ground());
        QVERIFY2(texts.left() <= 3 * ratio && texts.right() >= footer.width() - 3 * ratio, "footer");
        const auto [gapStart, gapEnd] = widestGap(footer, Looks::ground());
        QVERIFY((gapEnd - gapStart) / ratio > 50);
        const QImage buttons = inkOfRow(testButton());
        const auto [between, other] = widestGap(buttons, Looks::ground());
        QVERIFY2(between / ratio <= testButton()->sizeHint().expandedTo(testButton()->minimumSize()).width() + 1,
            qPrintable(QString::number(between)));
        QVERIFY((other - between) / ratio > 50);
    }

    void theWheelIsAsStrongAsItsTextAndKeepsItsDistance_data() { Looks::unchangingDesktops(); }
    void theWheelIsAsStrongAsItsTextAndKeepsItsDistance()
    {
        const Looks::Desktop desktop([this] {
            openWithCredentials();
            m_service->answerAll(LoopbackService::Reply::silence());
            QTest::mouseClick(testButton(), Qt::LeftButton);
        });
        const QImage button = picture(testButton());
        const double ratio = button.devicePixelRatio();
        const QImage all = PaintedPixels::part(button, testButton()->rect().adjusted(8, 4, -8, -4));
        const QColor ground = all.pixelColor(0, 0);
        // The widest gap between columns with marks parts the wheel from the text.
        const auto [gapStart, gapEnd] = widestGap(all, ground);
        QVERIFY2(gapEnd - gapStart >= 6 * ratio, qPrintable(QString::number(gapEnd - gapStart)));
        const QImage wheelPart = all.copy(0, 0, gapStart, all.height());
        const QRect disc = PaintedPixels::ink(wheelPart, ground, 1.15);
        const int side = testButton()->fontMetrics().height();
        QVERIFY2(disc.width() <= side * ratio && disc.height() <= side * ratio, "the wheel stands before the text");
        const double wheel = PaintedPixels::strongest(wheelPart, ground);
        const double text = PaintedPixels::strongest(all.copy(gapEnd, 0, all.width() - gapEnd, all.height()), ground);
        QVERIFY2(wheel <= text * 1.15 && wheel > 1.3, qPrintable(u"%1, text %2"_s.arg(wheel).arg(text)));
    }

private:
    void openWithResult(const QByteArray &answer)
    {
        openWithCredentials();
        Task::start(m_state->refresh()); // the footer tells of it
        QTRY_COMPARE(Task::running(), 0);
        m_service->answerInsights(answer, someFigures);
        runTest();
        QCoreApplication::processEvents();
    }

    QWidget *box(const QString &title) const { return WindowTree::find(window(), QAccessible::Grouping, title); }

    /// Without the title above it.
    QImage drawnBox(const QString &title) const
    {
        return PaintedPixels::part(picture(box(title)), box(title)->contentsRect());
    }

    ResultRow *result() const
    {
        for (ResultRow *row : window()->findChildren<ResultRow *>())
            if (row->isVisible())
                return row;
        return nullptr;
    }

    QLabel *lastRefresh() const
    {
        for (QLabel *label : window()->findChildren<QLabel *>())
            if (label->text().startsWith(u"Last: "_s))
                return label;
        return nullptr;
    }

    QImage picture(const QWidget *widget) const { return PaintedPixels::of(window(), widget); }

    static QRect place(const QWidget *widget, const QWidget *within)
    {
        return {widget->mapTo(within, QPoint()), widget->size()};
    }

    static std::pair<int, int> widestGap(const QImage &picture, const QColor &ground)
    {
        std::pair<int, int> widest(0, 0);
        int start = -1;
        for (int x = 0; x < picture.width(); ++x) {
            if (PaintedPixels::ink(picture.copy(x, 0, 1, picture.height()), ground, 1.15).isEmpty())
                continue;
            if (start >= 0 && x - start > widest.second - widest.first)
                widest = {start, x};
            start = x + 1;
        }
        return widest;
    }
};

QTEST_MAIN(SettingsLooksTest)
#include "SettingsLooksTest.moc"
