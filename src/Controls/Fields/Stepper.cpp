// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Controls/Fields/Stepper.h"

#include "Controls/Labels/TextLabel.h"

#include <QAccessibleWidget>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QToolButton>

#include <algorithm>

using namespace Qt::StringLiterals;

/// The stepper as screen readers see it: a spin button with its range.
class Stepper::Accessible : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit Accessible(Stepper *stepper) : QAccessibleWidget(stepper, QAccessible::SpinBox), m_stepper(stepper) {}

    static QAccessibleInterface *make(const QString &, QObject *object)
    {
        auto *const stepper = qobject_cast<Stepper *>(object);
        return stepper ? new Accessible(stepper) : nullptr;
    }

    void *interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::ValueInterface ? static_cast<QAccessibleValueInterface *>(this)
                                                   : QAccessibleWidget::interface_cast(type);
    }

    QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Value ? QString::number(m_stepper->value()) : QAccessibleWidget::text(kind);
    }

    QVariant currentValue() const override { return qlonglong{m_stepper->value()}; }
    QVariant minimumValue() const override { return qlonglong{m_stepper->range().lowest}; }
    QVariant maximumValue() const override { return qlonglong{m_stepper->range().highest}; }
    QVariant minimumStepSize() const override { return qlonglong{m_stepper->range().step}; }
    void setCurrentValue(const QVariant &value) override
    {
        if (const qlonglong wanted = value.toLongLong(); wanted != m_stepper->value())
            m_stepper->moveBy(wanted > m_stepper->value() ? 1 : -1);
    }

private:
    Stepper *m_stepper;
};

Stepper::Stepper(const QString &name, Range range, std::int64_t value)
    : m_range(range), m_value(value), m_label(new TextLabel(QString::number(value)))
{
    static const bool installed = (QAccessible::installFactory(&Accessible::make), true);
    Q_UNUSED(installed)
    setAccessibleName(name);
    auto *const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(4);
    row->addWidget(m_label);
    row->addSpacing(4);
    row->addWidget(button(u"−"_s, u"Decrease"_s, -1));
    row->addWidget(button(u"+"_s, u"Increase"_s, 1));
}

QWidget *Stepper::button(const QString &sign, const QString &name, std::int64_t direction)
{
    auto *const button = new QToolButton;
    button->setText(sign);
    button->setAccessibleName(name);
    button->setAccessibleDescription(accessibleName());
    button->setFocusPolicy(Qt::StrongFocus);
    button->setAutoRepeat(true);
    button->installEventFilter(this);
    // Never disabled at the bounds: the focus would jump to the other button under the user's fingers.
    connect(button, &QToolButton::clicked, this, [=, this] { moveBy(direction); });
    return button;
}

bool Stepper::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent *>(event)->key();
    if (key != Qt::Key_Up && key != Qt::Key_Down)
        return QWidget::eventFilter(watched, event);
    moveBy(key == Qt::Key_Up ? 1 : -1);
    return true;
}

void Stepper::moveBy(std::int64_t direction)
{
    // Brought near the range first, so that no stored number can overflow.
    const std::int64_t near = std::clamp(m_value, m_range.lowest - m_range.step, m_range.highest + m_range.step);
    const std::int64_t next = std::clamp(near + direction * m_range.step, m_range.lowest, m_range.highest);
    if (next == m_value)
        return;
    setValue(next);
    Q_EMIT stepped(next);
}

void Stepper::setValue(std::int64_t value)
{
    if (value == m_value)
        return;
    m_value = value;
    m_label->setText(QString::number(value));
    QAccessibleValueChangeEvent changed(this, qlonglong{value});
    QAccessible::updateAccessibility(&changed);
}
