// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Controls/Boxes/Divider.h"
#include "Controls/Boxes/RoundedBox.h"
#include "Controls/Labels/LinkLabel.h"
#include "Controls/Labels/MarkedLabel.h"
#include "Look/TextStyle.h"
#include "Looks.h"
#include "Pictures.h"
#include "Views/WindowManager.h"

#include <QPlainTextEdit>

using namespace Qt::StringLiterals;

/// How the Setup Guide looks, measured in what it paints, on a light and on a dark desktop. ctest runs it at 200 % too.
class GuideLooksTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        Pictures::keepIfFailed();
        WindowManager::shared().closeAll();
    }

    void textsHaveTheirFontsAndColours_data() { Looks::desktops(); }
    void textsHaveTheirFontsAndColours()
    {
        const Looks::Desktop desktop(&openGuide);
        QFont title = textFont(TextStyle::Title);
        title.setWeight(QFont::Bold);
        const QColor primary = Looks::colour(Theme::Ink::Primary);
        const QColor secondary = Looks::colour(Theme::Ink::Secondary);
        const QFont caption = textFont(TextStyle::Caption);
        const QList<Looks::Text> texts{
            {u"Getting Your Meta API Credentials"_s, title, primary},
            {u"Follow these steps to connect Vantelo to your ad account."_s, textFont(TextStyle::Subheadline),
                secondary},
            {u"Step 1: Create a Meta App"_s, textFont(TextStyle::Headline), primary},
            {u"Step 4: Find Your Ad Account ID"_s, textFont(TextStyle::Headline), primary},
            {u"Step 5: Paste into Settings"_s, textFont(TextStyle::Headline), primary},
            {u"Copy the token"_s, textFont(TextStyle::Body), primary},
            {m_lastText, textFont(TextStyle::Body), primary},
            {m_note, caption, secondary},
            {m_warning, caption, secondary},
            {m_tip, caption, secondary},
        };
        QString faults;
        for (const Looks::Text &text : texts)
            faults += Looks::textFaults(textOnThePage(text.text), text);
        QFont underlined = textFont(TextStyle::Body);
        underlined.setUnderline(true);
        for (const LinkLabel *link : guide()->findChildren<LinkLabel *>())
            faults += Looks::textFaults(onThePage(link), {link->text(), underlined, Looks::colour(Theme::Ink::Link)});
        QVERIFY2(faults.isEmpty(), qPrintable(faults));
    }

    void titlesOfTheBoxesFollowAnEmojiInColour_data() { Looks::desktops(); }
    void titlesOfTheBoxesFollowAnEmojiInColour()
    {
        const Looks::Desktop desktop(&openGuide);
        QFont font = textFont(TextStyle::Subheadline);
        font.setWeight(QFont::DemiBold);
        for (const auto &[emoji, title] :
            {std::pair(u"⚠️ "_s, u"Short-Lived Token"_s), {u"💡 "_s, u"Permanent Token"_s}}) {
            const QImage all = textOnThePage(emoji + title);
            QVERIFY2(PaintedPixels::isColourful(PaintedPixels::part(all, {0, 0, 20, 40})), qPrintable(title));
            // The title's own part is told by the blank before it, where it has its width.
            const Looks::Text text{title, font, Looks::colour(Theme::Ink::Primary)};
            const QColor ground = PaintedPixels::ground(all);
            const int end = PaintedPixels::ink(all, ground).right() + 1;
            const int start = end - Looks::textExtent(text, all, ground).width();
            QVERIFY2(PaintedPixels::ink(all.copy(start - 4, 0, 3, all.height()), ground).isEmpty(), qPrintable(title));
            QCOMPARE(Looks::textFaults(all.copy(start - 1, 0, all.width() - start, all.height()), text), QString());
        }
    }

    void eachTextStandsInItsPlace()
    {
        openGuide();
        const int bullets = QFontMetrics(textFont(TextStyle::Body)).horizontalAdvance(u'•') + 8;
        const QList<std::pair<QString, int>> lefts{
            {u"Getting Your Meta API Credentials"_s, 24},
            {u"Step 5: Paste into Settings"_s, 24 + 8 + bullets},
            {u"Copy the token"_s, 24 + 8 + bullets},
            {m_lastText, 24},
            {m_note, 24 + 4},
            {m_warning, 24 + 12},
            {m_tip, 24 + 12},
        };
        for (const auto &[text, left] : lefts)
            QCOMPARE(place(label(text)).left() + label(text)->contentsRect().left(), left);
        QCOMPARE(place(label(m_note)).left() + label(m_note)->contentsRect().right() + 1, page()->width() - 24 - 4);
        QCOMPARE(gap(label(u"Step 5: Paste into Settings"_s), label(m_lastText)), 8);
        for (const auto &[title, message] :
            {std::pair(u"⚠️ Short-Lived Token"_s, m_warning), {u"💡 Permanent Token"_s, m_tip}}) {
            const QWidget *const box = label(title)->parentWidget();
            QCOMPARE(label(title)->y(), 12);
            QCOMPARE(gap(label(title), label(message)), 4);
            QCOMPARE(box->height() - label(message)->geometry().bottom() - 1, 12);
        }
    }

    void symbolsAndBulletsAreDrawnBeforeTheirTexts_data() { Looks::desktops(); }
    void symbolsAndBulletsAreDrawnBeforeTheirTexts()
    {
        const Looks::Desktop desktop(&openGuide);
        const auto symbols = guide()->findChildren<SymbolLabel *>();
        QCOMPARE(symbols.size(), 5);
        for (const SymbolLabel *label : symbols) {
            const QImage picture = mark(label);
            const QColor primary = Looks::colour(Theme::Ink::Primary);
            const QRect disc = PaintedPixels::ink(picture, Looks::ground());
            QVERIFY2(disc.width() >= 10 * picture.devicePixelRatio() && std::abs(disc.width() - disc.height()) <= 2,
                qPrintable(label->text()));
            const QPoint leftOfTheDigit(disc.left() + disc.width() / 8, disc.center().y());
            QVERIFY2(PaintedPixels::isNear(picture.pixelColor(leftOfTheDigit), primary), qPrintable(label->text()));
            QVERIFY2(PaintedPixels::strongest(picture.copy(disc.adjusted(4, 4, -4, -4)), primary) > 2.0, "no digit");
        }
        const auto bullets = guide()->findChildren<BulletLabel *>();
        QCOMPARE(bullets.size(), 14);
        for (const BulletLabel *label : bullets) {
            const QImage picture =
                PaintedPixels::part(mark(label), {0, 0, label->contentsRect().left(), label->fontMetrics().height()});
            const Looks::Text bullet{u"•"_s, textFont(TextStyle::Body), Looks::colour(Theme::Ink::Secondary)};
            QCOMPARE(Looks::textFaults(picture, bullet), QString());
        }
    }

    void betweenTheSectionsThereAreFourDividers_data() { Looks::desktops(); }
    void betweenTheSectionsThereAreFourDividers()
    {
        const Looks::Desktop desktop(&openGuide);
        const std::pair<QString, QString> neighbours[] = {
            {u"Follow these steps to connect Vantelo to your ad account."_s, u"Step 1: Create a Meta App"_s},
            {u"In the app dashboard, click + Add Product → find Marketing API → Set Up"_s,
                u"Step 2: Generate an Access Token"_s},
            {m_note, u"Step 4: Find Your Ad Account ID"_s},
            {u"Your Ad Account ID is act_XXXXXXXXXX (or just the number)"_s, u"Step 5: Paste into Settings"_s},
        };
        const QImage all = page()->grab().toImage();
        QList<int> expected;
        for (const auto &[above, below] : neighbours) {
            QCOMPARE(gap(label(above), label(below)), 24 + 1 + 24);
            for (int pixel = 0; pixel < all.devicePixelRatio(); ++pixel)
                expected << qRound((place(label(below)).top() - 24 - 1) * all.devicePixelRatio()) + pixel;
        }
        QCOMPARE(linesAcross(all), expected);
    }

    void dividersAreThereAndWeakerThanAnyText_data() { Looks::desktops(); }
    void dividersAreThereAndWeakerThanAnyText()
    {
        const Looks::Desktop desktop(&openGuide);
        const double divider = PaintedPixels::strongest(onThePage(guide()->findChild<Divider *>()), Looks::ground());
        const double text = PaintedPixels::strongest(textOnThePage(u"Copy the token"_s), Looks::ground());
        QVERIFY2(divider > 1.2, qPrintable(QString::number(divider)));
        QVERIFY2(divider < text / 3, qPrintable(u"%1, text %2"_s.arg(divider).arg(text)));
    }

    void theBoxesHaveTheirColoursAndShape_data() { Looks::desktops(); }
    void theBoxesHaveTheirColoursAndShape()
    {
        const Looks::Desktop desktop(&openGuide);
        const auto colours = [](Theme::Box box) { return Theme::boxColours(box, QApplication::palette()); };
        const int orange = colours(Theme::Box::Warning).fill.hslHue();
        const int blue = colours(Theme::Box::Tip).fill.hslHue();
        QVERIFY2(orange > 15 && orange < 45, qPrintable(QString::number(orange)));
        QVERIFY2(blue > 195 && blue < 230, qPrintable(QString::number(blue)));
        const std::pair<const QWidget *, Theme::Box> boxes[] = {
            {label(m_warning)->parentWidget(), Theme::Box::Warning},
            {guide()->findChild<QPlainTextEdit *>()->parentWidget(), Theme::Box::Code},
            {label(m_tip)->parentWidget(), Theme::Box::Tip},
        };
        for (const auto &[box, look] : boxes) {
            const QString faults = Looks::boxFaults(onThePage(box), Looks::ground(), colours(look));
            QVERIFY2(faults.isEmpty(), qPrintable(faults));
            QCOMPARE(place(box).left(), 24);
            QCOMPARE(place(box).right() + 1, page()->width() - 24);
        }
    }

    void theCommandIsMonospaced_data() { Looks::desktops(); }
    void theCommandIsMonospaced()
    {
        const Looks::Desktop desktop(&openGuide);
        const auto *const command = guide()->findChild<QPlainTextEdit *>();
        const QRect inside = command->rect().adjusted(12, 12, -12, -12);
        const QImage text = PaintedPixels::part(onThePage(command), inside);
        const Looks::Text expected{
            command->toPlainText(), monospacedTextFont(TextStyle::Caption), Looks::colour(Theme::Ink::Primary)};
        QCOMPARE(Looks::textFaults(text, expected), QString());
        QCOMPARE(PaintedPixels::ink(PaintedPixels::part(onThePage(command), {2, 12, 9, 50}), Looks::ground()), QRect());
    }

    void linesOfAStepBeginWhereItsTitleDoes_data()
    {
        QTest::addColumn<double>("points");
        for (const double points : {7.0, 9.0, 10.0, 11.0, 13.0, 16.0, 20.0, 26.0})
            QTest::addRow("%g points", points) << points;
    }

    void linesOfAStepBeginWhereItsTitleDoes()
    {
        QFETCH(const double, points);
        openGuide(); // the font changes while it is open
        const WindowTree::SystemFontSize size(points);
        QTRY_COMPARE(label(u"Copy the token"_s)->font().pointSizeF(), points);
        QCoreApplication::processEvents();
        // An S, a C and a G begin alike; the strokes of a bold one a little further to the right in a large font.
        const double tolerance = 1.0 + points / 20.0;
        const double title = textEdge(u"Step 2: Generate an Access Token"_s);
        for (const QString &line : {u"Select your app from the dropdown"_s, u"Copy the token"_s})
            QVERIFY2(std::abs(textEdge(line) - title) <= tolerance,
                qPrintable(u"%1, the title %2"_s.arg(textEdge(line)).arg(title)));
        const QWidget *const link = WindowTree::find(guide(), QAccessible::Link, u"Graph API Explorer"_s);
        const QLabel *const above = label(u"Go to the Graph API Explorer"_s);
        QCOMPARE(place(link).x(), place(above).x() + above->contentsRect().left());
    }

private:
    static void openGuide() { WindowManager::shared().openSetupGuide(); }
    static QWidget *guide() { return WindowTree::windows(u"Setup Guide"_s).value(0); }
    static QWidget *page() { return guide()->findChild<QScrollArea *>()->widget(); }

    static QLabel *label(const QString &text)
    {
        const auto labels = guide()->findChildren<QLabel *>();
        for (QLabel *label : labels)
            if (label->text() == text)
                return label;
        return nullptr;
    }

    static QRect place(const QWidget *widget) { return {widget->mapTo(page(), QPoint()), widget->size()}; }

    static int gap(const QWidget *upper, const QWidget *lower)
    {
        return place(lower).top() - place(upper).bottom() - 1;
    }

    /// The widget's picture on the page, scrolled to or not.
    static QImage onThePage(const QWidget *widget) { return PaintedPixels::of(page(), widget); }

    /// A label's without its mark.
    static QImage textOnThePage(const QString &text)
    {
        return PaintedPixels::part(onThePage(label(text)), label(text)->contentsRect());
    }

    static QImage mark(const QLabel *label)
    {
        return PaintedPixels::part(onThePage(label), {0, 0, label->contentsRect().left(), label->height()});
    }

    /// Where the text behind the label's mark begins to be painted, on the page.
    static double textEdge(const QString &text)
    {
        const QImage picture = textOnThePage(text);
        const QRect ink = PaintedPixels::ink(picture, PaintedPixels::ground(picture), 2.0);
        return place(label(text)).left() + label(text)->contentsRect().left() + ink.left() / picture.devicePixelRatio();
    }

    /// The rows of pixels that are a line from one margin to the other.
    static QList<int> linesAcross(const QImage &all)
    {
        const QImage between = PaintedPixels::part(all, page()->rect().adjusted(24, 0, -24, 0));
        QList<int> lines;
        for (int y = 0; y < between.height(); ++y) {
            const QColor first = between.pixelColor(0, y);
            bool isLine = contrast(first, Looks::ground()) >= 1.2;
            for (int x = 1; isLine && x < between.width(); ++x)
                isLine = PaintedPixels::isNear(between.pixelColor(x, y), first);
            if (isLine)
                lines << y;
        }
        return lines;
    }

    const QString m_lastText = u"Open Vantelo Settings and paste your Access Token and Ad Account ID. Click "
                               "\"Test Connection\" to verify everything works."_s;
    const QString m_note =
        u"You can find your App ID and App Secret under Settings → Basic in your Meta App dashboard."_s;
    const QString m_warning =
        u"This token expires in ~1 hour. Exchange it for a long-lived token (~60 days) using the curl command below, "
        "or use a System User token from Business Manager for permanent access."_s;
    const QString m_tip =
        u"For a token that never expires, create a System User in Business Manager → Settings → System Users. "
        "Generate a token for the System User with ads_read permission."_s;
};

QTEST_MAIN(GuideLooksTest)
#include "GuideLooksTest.moc"
