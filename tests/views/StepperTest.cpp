// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Controls/Fields/Stepper.h"

#include <QAccessible>
#include <QLabel>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>

#include <limits>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 largest = std::numeric_limits<qint64>::max();
constexpr qint64 smallest = std::numeric_limits<qint64>::min();

} // namespace

class StepperTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aStepLandsInsideTheRange_data();
    void aStepLandsInsideTheRange();
    void aStepThatMovesNothingIsNotReported();
    void theArrowKeysStep();
    void theArrowKeysKeepTheFocus();
    void otherKeysDoNotStep();
    void holdingAButtonKeepsStepping();
    void screenReadersSeeTheNumberAndItsRange();
    void screenReadersMoveTheNumberStepByStep();
};

void StepperTest::aStepLandsInsideTheRange_data()
{
    QTest::addColumn<qint64>("value");
    QTest::addColumn<qint64>("down");
    QTest::addColumn<qint64>("up");
    QTest::newRow("the default") << qint64{15} << qint64{10} << qint64{20};
    QTest::newRow("lowest") << qint64{5} << qint64{5} << qint64{10};
    QTest::newRow("highest") << qint64{60} << qint64{55} << qint64{60};
    QTest::newRow("just above the lowest") << qint64{6} << qint64{5} << qint64{11};
    QTest::newRow("just below the highest") << qint64{59} << qint64{54} << qint64{60};
    QTest::newRow("zero") << qint64{0} << qint64{5} << qint64{5};
    QTest::newRow("below") << qint64{3} << qint64{5} << qint64{8};
    QTest::newRow("above") << qint64{62} << qint64{57} << qint64{60};
    QTest::newRow("far above") << qint64{1000} << qint64{60} << qint64{60};
    QTest::newRow("largest number") << largest << qint64{60} << qint64{60};
    QTest::newRow("smallest number") << smallest << qint64{5} << qint64{5};
}

void StepperTest::aStepLandsInsideTheRange()
{
    QFETCH(const qint64, value);
    for (const auto &[name, expected] : {std::pair("Decrease", "down"), std::pair("Increase", "up")}) {
        Stepper stepper(u"Minutes"_s, {.lowest = 5, .highest = 60, .step = 5}, value);
        QCOMPARE(stepper.findChild<QLabel *>()->text(), QString::number(value));
        for (QToolButton *button : stepper.findChildren<QToolButton *>())
            if (button->accessibleName() == QLatin1StringView(name))
                QTest::mouseClick(button, Qt::LeftButton);
        QTEST(qint64{stepper.value()}, expected);
        QCOMPARE(stepper.findChild<QLabel *>()->text(), QString::number(stepper.value()));
    }
}

void StepperTest::aStepThatMovesNothingIsNotReported()
{
    Stepper stepper(u"Minutes"_s, {.lowest = 5, .highest = 60, .step = 5}, 55);
    const QSignalSpy stepped(&stepper, &Stepper::stepped);
    QToolButton *const increase = stepper.findChildren<QToolButton *>().at(1);
    increase->click();
    increase->click();
    QCOMPARE(stepped.size(), 1);
    QCOMPARE(stepped.at(0).at(0).toLongLong(), 60);
}

void StepperTest::theArrowKeysStep()
{
    Stepper stepper(u"Minutes"_s, {.lowest = 5, .highest = 60, .step = 5}, 15);
    QToolButton *const button = stepper.findChild<QToolButton *>();
    QTest::keyClick(button, Qt::Key_Up);
    QCOMPARE(stepper.value(), 20);
    QTest::keyClick(button, Qt::Key_Down);
    QTest::keyClick(button, Qt::Key_Down);
    QCOMPARE(stepper.value(), 10);
}

void StepperTest::theArrowKeysKeepTheFocus()
{
    Stepper stepper(u"Minutes"_s, {.lowest = 5, .highest = 60, .step = 5}, 15);
    stepper.show();
    stepper.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&stepper));
    for (QToolButton *const button : stepper.findChildren<QToolButton *>()) {
        for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Down}) {
            button->setFocus();
            QTest::keyClick(button, key);
            QVERIFY(button->hasFocus());
        }
    }
}

void StepperTest::otherKeysDoNotStep()
{
    Stepper stepper(u"Minutes"_s, {.lowest = 5, .highest = 60, .step = 5}, 15);
    for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Right, Qt::Key_5})
        QTest::keyClick(stepper.findChild<QToolButton *>(), key);
    QCOMPARE(stepper.value(), 15);
}

void StepperTest::holdingAButtonKeepsStepping()
{
    Stepper stepper(u"Minutes"_s, {.lowest = 5, .highest = 60, .step = 5}, 15);
    stepper.show();
    QToolButton *const increase = stepper.findChildren<QToolButton *>().at(1);
    QTest::mousePress(increase, Qt::LeftButton);
    QTRY_COMPARE(stepper.value(), 60);
    QTest::mouseRelease(increase, Qt::LeftButton);
    QCOMPARE(stepper.value(), 60);
}

void StepperTest::screenReadersSeeTheNumberAndItsRange()
{
    Stepper stepper(u"Minutes"_s, {.lowest = 5, .highest = 60, .step = 10}, 15);
    QAccessibleInterface *const accessible = QAccessible::queryAccessibleInterface(&stepper);
    QCOMPARE(accessible->text(QAccessible::Name), u"Minutes"_s);
    QCOMPARE(accessible->text(QAccessible::Value), u"15"_s);
    QVERIFY(!accessible->textInterface());
    QAccessibleValueInterface *const value = accessible->valueInterface();
    QCOMPARE(value->currentValue().toLongLong(), 15);
    QCOMPARE(value->minimumValue().toLongLong(), 5);
    QCOMPARE(value->maximumValue().toLongLong(), 60);
    QCOMPARE(value->minimumStepSize().toLongLong(), 10);
    QObject *const button = stepper.findChild<QToolButton *>();
    QCOMPARE(QAccessible::queryAccessibleInterface(button)->role(), QAccessible::Button);
}

void StepperTest::screenReadersMoveTheNumberStepByStep()
{
    Stepper stepper(u"Minutes"_s, {.lowest = 5, .highest = 60, .step = 5}, 15);
    QAccessibleValueInterface *const value = QAccessible::queryAccessibleInterface(&stepper)->valueInterface();
    value->setCurrentValue(20);
    QCOMPARE(stepper.value(), 20);
    value->setCurrentValue(20);
    QCOMPARE(stepper.value(), 20);
    value->setCurrentValue(0);
    QCOMPARE(stepper.value(), 15);
}

QTEST_MAIN(StepperTest)
#include "StepperTest.moc"
