// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Controls/Labels/ResultRow.h"

#include <QAccessible>
#include <QElapsedTimer>
#include <QTest>

using namespace Qt::StringLiterals;

class ResultRowTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();

    void nothingShowsBeforeAnAnnouncement();
    void aShortMessageTakesOneLineAndNoToolTip();
    void aMessageTakesAtMostTwoLines_data();
    void aMessageTakesAtMostTwoLines();
    void aCutMessageIsWholeInItsToolTip();
    void aMessageIsNeverMarkup();
    void blankLinesAtTheEndsAreNotShown_data();
    void blankLinesAtTheEndsAreNotShown();
    void theSymbolAloneHasAName_data();
    void theSymbolAloneHasAName();
    void aLaterMessageReplacesTheEarlier();
    void anEndlessMessageCostsNoTime();

private:
    int lines() const { return (m_row->heightForWidth(400) - 4) / m_row->fontMetrics().lineSpacing(); }

    std::unique_ptr<ResultRow> m_row;
};

void ResultRowTest::init()
{
    m_row = std::make_unique<ResultRow>(u"xmark.circle.fill"_s, u"Connection failed"_s, Theme::Ink::Red, 4);
    m_row->resize(400, 40);
}

void ResultRowTest::nothingShowsBeforeAnAnnouncement()
{
    QWidget window;
    m_row->setParent(&window);
    window.show();
    QVERIFY(!m_row->isVisible());
    m_row->announce(u"Invalid API URL"_s);
    QVERIFY(m_row->isVisible());
    m_row->setParent(nullptr);
}

void ResultRowTest::aShortMessageTakesOneLineAndNoToolTip()
{
    m_row->announce(u"Invalid API URL"_s);
    QVERIFY(m_row->isVisible());
    QCOMPARE(m_row->text(), u"Invalid API URL"_s);
    QCOMPARE(m_row->accessibleName(), u"Invalid API URL"_s);
    QCOMPARE(lines(), 1);
    QCOMPARE(m_row->toolTip(), QString());
}

void ResultRowTest::aMessageTakesAtMostTwoLines_data()
{
    QTest::addColumn<QString>("message");
    QTest::addColumn<int>("lines");
    QTest::newRow("empty") << u""_s << 1;
    QTest::newRow("two lines") << u"some words "_s.repeated(8) << 2;
    QTest::newRow("many lines") << u"some words "_s.repeated(80) << 2;
    QTest::newRow("one line break") << u"one\ntwo"_s << 2;
    QTest::newRow("many line breaks") << u"one\ntwo\nthree\nfour"_s << 2;
    QTest::newRow("no blank to break at") << QString(400, u'x') << 2;
}

void ResultRowTest::aMessageTakesAtMostTwoLines()
{
    QFETCH(const QString, message);
    m_row->announce(message);
    QTEST(lines(), "lines");
    QCOMPARE(m_row->text(), message);
}

void ResultRowTest::aCutMessageIsWholeInItsToolTip()
{
    m_row->announce(u"some words "_s.repeated(50) + u"the end"_s);
    QVERIFY(m_row->toolTip().contains(u"the end"_s));
}

void ResultRowTest::aMessageIsNeverMarkup()
{
    m_row->announce(u"<b>"_s.repeated(300));
    QVERIFY(m_row->toolTip().contains(u"&lt;b&gt;"_s)); // a tool tip is markup to Qt, so it is escaped
    const QImage tags = m_row->grab().toImage();
    m_row->announce(u"<i>"_s.repeated(300));
    QVERIFY(m_row->grab().toImage() != tags); // the tags themselves are drawn
}

void ResultRowTest::blankLinesAtTheEndsAreNotShown_data()
{
    QTest::addColumn<QString>("message");
    QTest::addColumn<QString>("shown");
    QTest::newRow("before") << u"\n\n\nInvalid token"_s << u"Invalid token"_s;
    QTest::newRow("before, with blanks in them") << u" \n\t\r\n  Invalid token"_s << u"  Invalid token"_s;
    QTest::newRow("behind") << u"Invalid token\n \n"_s << u"Invalid token"_s;
    QTest::newRow("separators of their own") << u"\u2028\u2029Invalid token\u2028"_s << u"Invalid token"_s;
    QTest::newRow("many") << QString(3000, u'\n') + u"Invalid token"_s << u"Invalid token"_s;
    QTest::newRow("between") << u"\none\n\ntwo\n"_s << u"one\n\ntwo"_s;
}

void ResultRowTest::blankLinesAtTheEndsAreNotShown()
{
    QFETCH(const QString, message);
    QFETCH(const QString, shown);
    m_row->announce(shown);
    const QImage expected = m_row->grab().toImage();
    const int height = lines();
    m_row->announce(u"something else"_s);
    m_row->announce(message);
    QCOMPARE(m_row->grab().toImage(), expected);
    QCOMPARE(lines(), height);
    QCOMPARE(QAccessible::queryAccessibleInterface(m_row.get())->text(QAccessible::Name), shown);
}

void ResultRowTest::theSymbolAloneHasAName_data()
{
    QTest::addColumn<QString>("message");
    QTest::newRow("empty") << QString();
    QTest::newRow("blank") << u" \n\n\t"_s;
}

void ResultRowTest::theSymbolAloneHasAName()
{
    QFETCH(const QString, message);
    m_row->announce(message);
    QCOMPARE(QAccessible::queryAccessibleInterface(m_row.get())->text(QAccessible::Name), u"Connection failed"_s);
    QCOMPARE(lines(), 1);
    QVERIFY(m_row->isVisible());
}

void ResultRowTest::aLaterMessageReplacesTheEarlier()
{
    m_row->announce(u"some words "_s.repeated(50));
    m_row->announce(u"short"_s);
    QCOMPARE(m_row->text(), u"short"_s);
    QCOMPARE(m_row->toolTip(), QString());
    QCOMPARE(lines(), 1);
}

void ResultRowTest::anEndlessMessageCostsNoTime()
{
    QElapsedTimer timer;
    timer.start();
    m_row->announce(u"word "_s.repeated(2'000'000));
    m_row->grab();
    QCOMPARE(lines(), 2);
    QVERIFY2(timer.elapsed() < 1000, qPrintable(QString::number(timer.elapsed())));
}

QTEST_MAIN(ResultRowTest)
#include "ResultRowTest.moc"
