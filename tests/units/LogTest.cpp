// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Foundation/Log.h"
#include "OutputCapture.h"

#include <QTest>

using namespace Qt::StringLiterals;

class LogTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aMessageIsOneLineAtOnce_data()
    {
        QTest::addColumn<QString>("message");
        QTest::addColumn<QByteArray>("written");
        QTest::newRow("plain") << u"The disk is full."_s << "Vantelo: The disk is full.\n"_ba;
        QTest::newRow("line breaks") << u"one\ntwo\r\nthree\rfour\n"_s << "Vantelo: one two  three four \n"_ba;
        QTest::newRow("blanks and per cents") << u"  100 %s "_s << "Vantelo:   100 %s \n"_ba;
        QTest::newRow("empty") << u""_s << "Vantelo: \n"_ba;
        QTest::newRow("not ASCII") << u"„naïve“ 😀"_s << "Vantelo: „naïve“ 😀\n"_ba;
    }

    void aMessageIsOneLineAtOnce()
    {
        QFETCH(const QString, message);
        OutputCapture output;
        logLine(message);
        QTEST(output.text(), "written"); // and not a byte more
    }
};

QTEST_GUILESS_MAIN(LogTest)
#include "LogTest.moc"
