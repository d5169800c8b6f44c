// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Controls/Windows/Alert.h"

#include "Foundation/Task.h"
#include "PaintedPixels.h"
#include "Pictures.h"
#include "WindowTree.h"

#include <QDialogButtonBox>
#include <QElapsedTimer>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

Alert alertSaying(const QString &informativeText)
{
    return {.messageText = u"New Update Available"_s,
        .informativeText = informativeText,
        .style = Alert::Style::Informational,
        .buttons = {u"Download Now"_s, u"Later"_s}};
}

QCoro::Task<> show(QString informativeText) { co_await Alert::runModal(alertSaying(informativeText)); }

QString lines(int count)
{
    QString text;
    for (int line = 1; line <= count; ++line)
        text += u"Line %1 of the notes\n"_s.arg(line);
    return text + u"The end."_s;
}

} // namespace

/// The alerts as a user sees, reads and hears them.
class AlertTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        Pictures::keepIfFailed();
        Alert::dismissAll();
        QTRY_COMPARE(Task::running(), 0);
    }

    void aTextIsDrawnAsItStands_data()
    {
        QTest::addColumn<QString>("one");
        QTest::addColumn<QString>("other");
        QTest::newRow("tags") << u"<b>Fixes</b>"_s << u"<strong>Fixes</strong>"_s;
        QTest::newRow("a comment") << u"<p>Fixes<!-- one -->"_s << u"<p>Fixes<!-- two -->"_s;
        QTest::newRow("a character reference") << u"<p>&lt;"_s << u"<p>&#60;"_s;
        QTest::newRow("line breaks") << u"<p>one\ntwo"_s << u"<p>one two"_s;
    }

    void aTextIsDrawnAsItStands()
    {
        QFETCH(const QString, one);
        QFETCH(const QString, other);
        // As markup, two texts of a row would look the same.
        QVERIFY(picture(one) != picture(other));
    }

    void aLinkInATextIsNoLink()
    {
        open(u"<a href='https://vantelo.example'>page</a>"_s);
        for (QAccessibleInterface *node : WindowTree::nodes(alert()))
            QVERIFY(node->role() != QAccessible::Link);
        QCOMPARE(spokenText(), u"<a href='https://vantelo.example'>page</a>"_s);
    }

    void aScreenReaderIsToldBothTexts()
    {
        open(u"Fixes & <b>more</b>\n\n"_s);
        QCOMPARE(WindowTree::accessible(alert())->text(QAccessible::Name), u"New Update Available"_s);
        QCOMPARE(WindowTree::accessible(alert())->text(QAccessible::Description), u"Fixes & <b>more</b>\n\n"_s);
        QCOMPARE(spokenText(), u"Fixes & <b>more</b>\n\n"_s);
    }

    void anAlertFitsTheScreen_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<double>("points");
        QTest::newRow("no notes") << u"Version 2 is now available.\n\n"_s << 10.0;
        QTest::newRow("60 lines") << lines(60) << 10.0;
        QTest::newRow("60 lines in a large font") << lines(60) << 22.0;
        QTest::newRow("300 lines") << lines(300) << 10.0;
        QTest::newRow("20000 lines") << lines(20000) << 10.0;
        QTest::newRow("one long line") << u"some words "_s.repeated(3000) + u"The end."_s << 10.0;
        QTest::newRow("no blank to break at") << QString(30000, u'x') + u"The end."_s << 10.0;
    }

    void anAlertFitsTheScreen()
    {
        QFETCH(const QString, text);
        QFETCH(const double, points);
        const WindowTree::SystemFontSize size(points);
        open(text);
        const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
        QVERIFY(screen.contains(alert()->geometry()));
        const auto buttons = alert()->findChildren<QPushButton *>();
        QCOMPARE(buttons.size(), 2);
        for (const QPushButton *button : buttons)
            QCOMPARE(button->visibleRegion(), QRegion(button->rect()));
        QCOMPARE(spokenText(), text);
    }

    void aLongTextCanBeReadToItsEndByKeyboard()
    {
        open(lines(300));
        const int end = text()->characterCount() - 1;
        QVERIFY(isInSight(0));
        QVERIFY(!isInSight(end));
        tabToTheText();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_End, Qt::ControlModifier);
        QVERIFY(isInSight(end));
    }

    void aShortTextIsThereAtOnce()
    {
        open(lines(8));
        for (int offset = 0; offset < text()->characterCount(); ++offset)
            QVERIFY(isInSight(offset));
    }

    void theFirstButtonHasTheFocusAndTheTextNoCaret()
    {
        open(u"  Version 2"_s); // the caret would stand before the blanks
        const auto *const button = qobject_cast<QPushButton *>(QApplication::focusWidget());
        QVERIFY(button);
        QCOMPARE(button->text(), u"Download Now"_s);
        const QImage text = PaintedPixels::of(alert(), qobject_cast<QWidget *>(textNode()->object()));
        const QColor ground = PaintedPixels::ground(text);
        QVERIFY(PaintedPixels::ink(text, ground).isValid());
        QVERIFY(PaintedPixels::ink(PaintedPixels::part(text, {0, 0, 3, 40}), ground).isEmpty());
    }

    void theKeysOfTheButtonsWorkFromTheText_data()
    {
        QTest::addColumn<Qt::Key>("key");
        QTest::newRow("Return") << Qt::Key_Return;
        QTest::newRow("Escape") << Qt::Key_Escape;
    }

    void theButtonsStandInTheDesktopsOrder_data()
    {
        QTest::addColumn<int>("layout");
        QTest::addColumn<bool>("theFirstIsLeft");
        QTest::newRow("Plasma") << int{QDialogButtonBox::KdeLayout} << true;
        QTest::newRow("GNOME") << int{QDialogButtonBox::GnomeLayout} << false;
    }

    void theButtonsStandInTheDesktopsOrder()
    {
        QFETCH(const int, layout);
        QFETCH(const bool, theFirstIsLeft);
        open(u"Version 2 is now available.\n\n"_s);
        for (QDialogButtonBox *row : alert()->findChildren<QDialogButtonBox *>())
            row->setStyleSheet(u"QDialogButtonBox { button-layout: %1 }"_s.arg(layout));
        QCoreApplication::processEvents();
        const auto buttons = alert()->findChildren<QPushButton *>();
        QCOMPARE(buttons.size(), 2);
        QVERIFY(buttons[0]->isDefault());
        QCOMPARE(buttons[0]->x() < buttons[1]->x(), theFirstIsLeft);
    }

    void theKeysOfTheButtonsWorkFromTheText()
    {
        QFETCH(const Qt::Key, key);
        open(lines(300));
        tabToTheText();
        QTest::keyClick(QApplication::focusWidget(), key);
        QTRY_COMPARE(Task::running(), 0);
    }

    void notesWithoutEndCostNoTime()
    {
        QElapsedTimer timer;
        timer.start();
        open(lines(30000));
        QVERIFY2(timer.elapsed() < 2000, qPrintable(QString::number(timer.elapsed())));
    }

private:
    static QWidget *alert() { return QApplication::activeModalWidget(); }

    static void open(const QString &informativeText)
    {
        Task::start(show(informativeText));
        QTRY_VERIFY(alert());
        QVERIFY(QTest::qWaitForWindowActive(alert()));
    }

    static QImage picture(const QString &informativeText)
    {
        open(informativeText);
        const QImage picture = alert()->grab().toImage();
        Alert::dismissAll();
        return picture;
    }

    static void tabToTheText()
    {
        for (int stops = 0; stops < 2; ++stops)
            if (qobject_cast<QPushButton *>(QApplication::focusWidget()))
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), textNode()->object());
    }

    static QAccessibleInterface *textNode()
    {
        for (QAccessibleInterface *node : WindowTree::nodes(alert()))
            if (node->textInterface() && node->role() == QAccessible::EditableText)
                return node;
        return nullptr;
    }

    static QAccessibleTextInterface *text() { return textNode()->textInterface(); }
    static QString spokenText() { return text()->text(0, text()->characterCount()); }

    /// Whether this character stands between the first and the last one that are on the screen.
    static bool isInSight(int offset)
    {
        const auto *const pane = qobject_cast<QPlainTextEdit *>(textNode()->object());
        const QRect place = pane->viewport()->rect();
        return pane->cursorForPosition(place.topLeft()).position() <= offset &&
               offset <= pane->cursorForPosition(place.bottomRight()).position();
    }
};

QTEST_MAIN(AlertTest)
#include "AlertTest.moc"
