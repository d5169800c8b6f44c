// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Controls/Labels/MarkedLabel.h"
#include "Pictures.h"
#include "TestDeployment.h"
#include "Views/WindowManager.h"
#include "WindowTree.h"

#include <QAbstractButton>
#include <QClipboard>
#include <QDesktopServices>
#include <QDrag>
#include <QMimeData>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString command = u"curl -X GET \"https://graph.facebook.com/v21.0/oauth/access_token\\\n"
                        "  ?grant_type=fb_exchange_token\\\n"
                        "  &client_id=YOUR_APP_ID\\\n"
                        "  &client_secret=YOUR_APP_SECRET\\\n"
                        "  &fb_exchange_token=YOUR_SHORT_TOKEN\""_s;

} // namespace

class SetupGuideViewTest : public QObject {
    Q_OBJECT

public Q_SLOTS:
    void opened(const QUrl &url) { m_opened.append(url); }

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase() { QDesktopServices::unsetUrlHandler(u"https"_s); }
    void init();
    void cleanup();

    void thePageShowsItsTextsInReadingOrder();
    void theStepsShowTheirNumbersAsSymbols();
    void stepTitlesAreHeadings();
    void theCommandIsTheOneToCopy();
    void theAddressesAreTheRealOnesWhereverRequestsGo();

    void aLinkOpensItsPageAndLeavesTheGuideOpen_data();
    void aLinkOpensItsPageAndLeavesTheGuideOpen();
    void aLinkOpensByKeyboard_data();
    void aLinkOpensByKeyboard();
    void aLinkCanBePressedByScreenReaders();
    void aLinkCanBeFocusedByScreenReaders();
    void textRowsAreNotClickable();

    void theCommandKeepsItsFiveLinesAndScrollsSideways();
    void theWholeCommandIsVisibleFromTopToBottom();
    void theCommandCanBeSelectedAndCopied();
    void theCommandIsDraggedAsItCanBeRun();
    void theWheelOverTheCommandScrollsThePage();

    void thePageWrapsInANarrowWindow();
    void thePageScrollsDownWithAVisibleScrollBar();
    void theSpacesAreThoseOfThePage();
    void belowTheLastBoxComesItsOwnSpaceAndThePages();
    void linesAndLinksBeginAtTheSamePlace();
    void nothingIsClippedWhateverTheFontSize_data();
    void nothingIsClippedWhateverTheFontSize();
    void theTabKeyGoesFromLinkToLinkAndShowsThem();

private:
    QWidget *window() const { return WindowTree::windows(u"Setup Guide"_s).value(0); }
    QScrollArea *page() const { return window()->findChild<QScrollArea *>(); }
    QPlainTextEdit *codeBlock() const { return window()->findChild<QPlainTextEdit *>(); }
    QAbstractButton *link(const QString &text) const;
    QLabel *label(const QString &text) const;
    QRect place(const QWidget *widget) const;

    QList<QUrl> m_opened;
};

void SetupGuideViewTest::initTestCase()
{
    QDesktopServices::setUrlHandler(u"https"_s, this, "opened");
    TestDeployment::setOrigin(u"http://127.0.0.1:9"_s);
}

void SetupGuideViewTest::init()
{
    m_opened.clear();
    WindowManager::shared().openSetupGuide();
    QVERIFY(QTest::qWaitForWindowActive(window()));
}

void SetupGuideViewTest::cleanup()
{
    Pictures::keepIfFailed();
    WindowManager::shared().closeAll();
}

QAbstractButton *SetupGuideViewTest::link(const QString &text) const
{
    return qobject_cast<QAbstractButton *>(WindowTree::find(window(), QAccessible::Link, text));
}

QLabel *SetupGuideViewTest::label(const QString &text) const
{
    for (QLabel *label : window()->findChildren<QLabel *>())
        if (label->text() == text)
            return label;
    return nullptr;
}

/// Where the widget stands on the page.
QRect SetupGuideViewTest::place(const QWidget *widget) const
{
    return {widget->mapTo(page()->widget(), QPoint()), widget->size()};
}

void SetupGuideViewTest::thePageShowsItsTextsInReadingOrder()
{
    const QStringList expected{
        u"Setup Guide"_s, // the window
        u"Getting Your Meta API Credentials"_s,
        u"Follow these steps to connect Vantelo to your ad account."_s,
        u"Step 1: Create a Meta App"_s,
        u"Go to Meta for Developers"_s,
        u"developers.facebook.com"_s,
        u"Click My Apps → Create App"_s,
        u"Select Other → Business type"_s,
        u"Name it anything (e.g., \"Ads Monitor\")"_s,
        u"In the app dashboard, click + Add Product → find Marketing API → Set Up"_s,
        u"Step 2: Generate an Access Token"_s,
        u"Go to the Graph API Explorer"_s,
        u"Graph API Explorer"_s,
        u"Select your app from the dropdown"_s,
        u"Click Generate Access Token"_s,
        u"Grant the ads_read permission when prompted"_s,
        u"Copy the token"_s,
        u"⚠️ Short-Lived Token"_s,
        u"This token expires in ~1 hour. Exchange it for a long-lived token (~60 days) using the curl command below, or use a System User token from Business Manager for permanent access."_s,
        u"Step 3: Get a Long-Lived Token"_s,
        u"Run this command in Terminal (replace the placeholders):"_s,
        u"Command"_s, // what screen readers call the code block
        u"You can find your App ID and App Secret under Settings → Basic in your Meta App dashboard."_s,
        u"Step 4: Find Your Ad Account ID"_s,
        u"Open Ads Manager"_s,
        u"adsmanager.facebook.com"_s,
        u"Look at the URL — it contains act=XXXXXXXXXX"_s,
        u"Your Ad Account ID is act_XXXXXXXXXX (or just the number)"_s,
        u"Step 5: Paste into Settings"_s,
        u"Open Vantelo Settings and paste your Access Token and Ad Account ID. Click \"Test Connection\" to verify everything works."_s,
        u"💡 Permanent Token"_s,
        u"For a token that never expires, create a System User in Business Manager → Settings → System Users. Generate a token for the System User with ads_read permission."_s,
    };
    QCOMPARE(WindowTree::names(window()), expected);
}

void SetupGuideViewTest::theStepsShowTheirNumbersAsSymbols()
{
    QStringList symbols;
    for (const SymbolLabel *label : window()->findChildren<SymbolLabel *>())
        symbols.append(label->symbolName() + u' ' + label->text());
    const QStringList expected{
        u"1.circle.fill Step 1: Create a Meta App"_s,
        u"2.circle.fill Step 2: Generate an Access Token"_s,
        u"3.circle.fill Step 3: Get a Long-Lived Token"_s,
        u"4.circle.fill Step 4: Find Your Ad Account ID"_s,
        u"5.circle.fill Step 5: Paste into Settings"_s,
    };
    QCOMPARE(symbols, expected);
}

void SetupGuideViewTest::stepTitlesAreHeadings()
{
    QVERIFY(WindowTree::find(window(), QAccessible::Heading, u"Getting Your Meta API Credentials"_s));
    QVERIFY(WindowTree::find(window(), QAccessible::Heading, u"Step 1: Create a Meta App"_s));
    QVERIFY(!WindowTree::find(window(), QAccessible::Heading, u"Copy the token"_s));
}

void SetupGuideViewTest::theCommandIsTheOneToCopy()
{
    QCOMPARE(codeBlock()->toPlainText(), command);
    const auto *const text = WindowTree::accessible(codeBlock())->textInterface();
    QCOMPARE(text->text(0, text->characterCount()), command);
    QVERIFY(codeBlock()->isReadOnly());
}

void SetupGuideViewTest::theAddressesAreTheRealOnesWhereverRequestsGo()
{
    QVERIFY(Deployment::graphBaseUrl().startsWith(u"http://127.0.0.1"_s));
    QVERIFY(codeBlock()->toPlainText().contains(u"https://graph.facebook.com/v21.0/"_s));
    for (const QString &name : WindowTree::names(window()))
        QVERIFY(!name.contains(u"127.0.0.1"_s));
}

void SetupGuideViewTest::aLinkOpensItsPageAndLeavesTheGuideOpen_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QUrl>("target");
    QTest::newRow("developer portal") << u"developers.facebook.com"_s << QUrl(u"https://developers.facebook.com/"_s);
    QTest::newRow("explorer") << u"Graph API Explorer"_s << QUrl(u"https://developers.facebook.com/tools/explorer/"_s);
    QTest::newRow("ads manager") << u"adsmanager.facebook.com"_s << QUrl(u"https://adsmanager.facebook.com/"_s);
}

void SetupGuideViewTest::aLinkOpensItsPageAndLeavesTheGuideOpen()
{
    QFETCH(const QString, text);
    QFETCH(const QUrl, target);
    QTest::mouseClick(link(text), Qt::LeftButton);
    QCOMPARE(m_opened, QList<QUrl>{target});
    QVERIFY(window());
}

void SetupGuideViewTest::aLinkOpensByKeyboard_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("Return") << Qt::Key_Return;
    QTest::newRow("Enter") << Qt::Key_Enter;
    QTest::newRow("Space") << Qt::Key_Space;
}

void SetupGuideViewTest::aLinkOpensByKeyboard()
{
    QFETCH(const Qt::Key, key);
    link(u"Graph API Explorer"_s)->setFocus();
    QTest::keyClick(window()->focusWidget(), key);
    QCOMPARE(m_opened.size(), 1);
}

void SetupGuideViewTest::aLinkCanBePressedByScreenReaders()
{
    QAccessibleActionInterface *const actions =
        WindowTree::accessible(link(u"adsmanager.facebook.com"_s))->actionInterface();
    QVERIFY(actions->actionNames().contains(QAccessibleActionInterface::pressAction()));
    actions->doAction(QAccessibleActionInterface::pressAction());
    QCOMPARE(m_opened, QList<QUrl>{QUrl(u"https://adsmanager.facebook.com/"_s)});
}

void SetupGuideViewTest::aLinkCanBeFocusedByScreenReaders()
{
    QAbstractButton *const reached = link(u"adsmanager.facebook.com"_s);
    WindowTree::accessible(reached)->actionInterface()->doAction(QAccessibleActionInterface::setFocusAction());
    QVERIFY(reached->hasFocus());
    QVERIFY(m_opened.isEmpty());
}

void SetupGuideViewTest::textRowsAreNotClickable()
{
    for (QLabel *label : window()->findChildren<QLabel *>()) {
        QTest::mouseClick(label, Qt::LeftButton);
        QCOMPARE(label->textFormat(), Qt::PlainText);
        QCOMPARE(label->focusPolicy(), Qt::NoFocus);
    }
    QCOMPARE(m_opened, QList<QUrl>());
    QCOMPARE(window()->findChildren<QAbstractButton *>(QString(), Qt::FindChildrenRecursively).size(), 3);
}

void SetupGuideViewTest::theCommandKeepsItsFiveLinesAndScrollsSideways()
{
    const WindowTree::SystemFontSize size(14.0);
    window()->resize(window()->minimumSize());
    QTRY_VERIFY(codeBlock()->horizontalScrollBar()->maximum() > 0);
    QCOMPARE(codeBlock()->lineWrapMode(), QPlainTextEdit::NoWrap);
    QCOMPARE(codeBlock()->document()->lineCount(), 5);
    QVERIFY(!codeBlock()->horizontalScrollBar()->isVisible());
    QVERIFY(!codeBlock()->verticalScrollBar()->isVisible());
    codeBlock()->setFocus();
    QTest::keyClick(codeBlock(), Qt::Key_End);
    QVERIFY(codeBlock()->horizontalScrollBar()->value() > 0);
    QCOMPARE(page()->horizontalScrollBar()->value(), 0);
}

void SetupGuideViewTest::theWholeCommandIsVisibleFromTopToBottom()
{
    QCOMPARE(codeBlock()->verticalScrollBar()->maximum(), 0);
    QTextCursor cursor = codeBlock()->textCursor();
    const QRect first = codeBlock()->cursorRect(cursor);
    cursor.movePosition(QTextCursor::End);
    const QRect last = codeBlock()->cursorRect(cursor);
    QCOMPARE(first.left(), 12);
    QCOMPARE(first.top(), 12);
    const int below = codeBlock()->viewport()->height() - last.bottom() - 1;
    QVERIFY2(below >= 11 && below <= 13, qPrintable(QString::number(below)));
}

void SetupGuideViewTest::theCommandCanBeSelectedAndCopied()
{
    codeBlock()->setFocus();
    QTest::keySequence(codeBlock(), QKeySequence::SelectAll);
    QTest::keySequence(codeBlock(), QKeySequence::Copy);
    QCOMPARE(QApplication::clipboard()->text(), QString(command).replace(u"\n  "_s, u"\n"_s));
    QTest::keyClicks(codeBlock(), u"typed"_s);
    QCOMPARE(codeBlock()->toPlainText(), command);
}

void SetupGuideViewTest::theCommandIsDraggedAsItCanBeRun()
{
    codeBlock()->selectAll();
    QWidget *const text = codeBlock()->viewport();
    const QPoint start = codeBlock()->cursorRect(QTextCursor(codeBlock()->document())).center() + QPoint(20, 0);
    QTest::mousePress(text, Qt::LeftButton, {}, start);
    const QPointF end = start + QPointF(2.0 * QApplication::startDragDistance(), 0.0);
    QMouseEvent move(QEvent::MouseMove, end, text->mapToGlobal(end), Qt::NoButton, Qt::LeftButton, {});
    QApplication::sendEvent(text, &move); // here a drag ends at once, and is there until the event loop comes round
    const auto *const drag = text->findChild<QDrag *>();
    QVERIFY(drag);
    QCOMPARE(drag->mimeData()->text(), QString(command).replace(u"\n  "_s, u"\n"_s));
    QCOMPARE(drag->mimeData()->formats(), QStringList{u"text/plain"_s});
}

void SetupGuideViewTest::theWheelOverTheCommandScrollsThePage()
{
    page()->verticalScrollBar()->setValue(page()->verticalScrollBar()->maximum() / 2);
    const int before = page()->verticalScrollBar()->value();
    const QPointF middle = codeBlock()->viewport()->rect().center();
    QWheelEvent wheel(middle, codeBlock()->viewport()->mapToGlobal(middle), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
        Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&wheel); // only the user's own wheel is passed on to the page
    qApp->notify(codeBlock()->viewport(), &wheel);
    QTRY_VERIFY(page()->verticalScrollBar()->value() > before);
}

void SetupGuideViewTest::thePageWrapsInANarrowWindow()
{
    const QLabel *const longText = label(u"In the app dashboard, click + Add Product → find Marketing API → Set Up"_s);
    const WindowTree::SystemFontSize size(14.0);
    window()->resize(window()->minimumSize());
    QTRY_VERIFY(longText->height() > longText->fontMetrics().lineSpacing() * 3 / 2);
    QCOMPARE(page()->widget()->width(), page()->viewport()->width());
    QCOMPARE(page()->horizontalScrollBar()->maximum(), 0);
    QCOMPARE(WindowTree::clippedTexts(window()), QStringList());
}

void SetupGuideViewTest::thePageScrollsDownWithAVisibleScrollBar()
{
    QVERIFY(page()->verticalScrollBar()->isVisible());
    QVERIFY(page()->verticalScrollBar()->maximum() > 0);
    QCOMPARE(page()->verticalScrollBar()->value(), 0);
    QCOMPARE(QApplication::focusWidget(), page()); // the keys scroll at once
    QTest::keyClick(page(), Qt::Key_PageDown);
    QVERIFY(page()->verticalScrollBar()->value() > 0);
}

void SetupGuideViewTest::theSpacesAreThoseOfThePage()
{
    const QWidget *const title = label(u"Getting Your Meta API Credentials"_s);
    const QWidget *const subtitle = label(u"Follow these steps to connect Vantelo to your ad account."_s);
    const QWidget *const step = label(u"Step 1: Create a Meta App"_s);
    const QWidget *const line = label(u"Go to Meta for Developers"_s);
    const auto gap = [this](const QWidget *upper, const QWidget *lower) {
        return place(lower).top() - place(upper).bottom() - 1;
    };
    QCOMPARE(place(title).topLeft(), QPoint(24, 24));
    QCOMPARE(gap(title, subtitle), 4);
    QCOMPARE(gap(step, line), 8);
    QCOMPARE(gap(line, link(u"developers.facebook.com"_s)), 6);
    QCOMPARE(place(line).left() - place(step).left(), 8);
    QCOMPARE(gap(codeBlock(), label(u"You can find your App ID and App Secret under Settings → Basic in your Meta App "
                                    "dashboard."_s)),
        24);
    const QWidget *const boxTitle = label(u"⚠️ Short-Lived Token"_s);
    QCOMPARE(boxTitle->pos(), QPoint(12, 12));
    QCOMPARE(place(boxTitle->parentWidget()).left(), 24);
    QCOMPARE(place(boxTitle->parentWidget()).right() + 1, page()->widget()->width() - 24);
}

void SetupGuideViewTest::belowTheLastBoxComesItsOwnSpaceAndThePages()
{
    const QWidget *const lastBox = label(u"💡 Permanent Token"_s)->parentWidget();
    QCOMPARE(page()->widget()->height() - place(lastBox).bottom() - 1, 20 + 24);
}

void SetupGuideViewTest::linesAndLinksBeginAtTheSamePlace()
{
    const QLabel *const line = label(u"Go to Meta for Developers"_s);
    QCOMPARE(place(link(u"developers.facebook.com"_s)).left(), place(line).left() + line->contentsRect().left());
}

void SetupGuideViewTest::nothingIsClippedWhateverTheFontSize_data()
{
    QTest::addColumn<double>("points");
    QTest::newRow("small") << 7.0;
    QTest::newRow("usual") << 10.0;
    QTest::newRow("large") << 16.0;
    QTest::newRow("very large") << 26.0;
}

void SetupGuideViewTest::nothingIsClippedWhateverTheFontSize()
{
    QFETCH(const double, points);
    const WindowTree::SystemFontSize size(points);
    QTRY_COMPARE(label(u"Copy the token"_s)->font().pointSizeF(), points);
    for (const QSize &extent : {window()->size(), window()->minimumSize()}) {
        window()->resize(extent);
        QCoreApplication::processEvents();
        QTRY_COMPARE(WindowTree::clippedTexts(window()), QStringList());
        QCOMPARE(codeBlock()->verticalScrollBar()->maximum(), 0);
        // A word too long for the window, in a very large font, can be scrolled to.
        const bool fits = page()->widget()->width() == page()->viewport()->width();
        QVERIFY(fits || (points > 20.0 && page()->horizontalScrollBar()->isVisible()));
        for (const QAbstractButton *link : window()->findChildren<QAbstractButton *>())
            QVERIFY(link->size().width() >= link->sizeHint().width());
    }
}

void SetupGuideViewTest::theTabKeyGoesFromLinkToLinkAndShowsThem()
{
    const QList<QWidget *> order{link(u"developers.facebook.com"_s), link(u"Graph API Explorer"_s), codeBlock(),
        link(u"adsmanager.facebook.com"_s)};
    for (QWidget *const next : order) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), next);
        QVERIFY(!next->visibleRegion().isEmpty());
    }
}

QTEST_MAIN(SetupGuideViewTest)
#include "SetupGuideViewTest.moc"
