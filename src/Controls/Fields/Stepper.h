// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QWidget>

#include <cstdint>

class TextLabel;

/// A whole number with two small buttons that move it by one step within a range. The number is shown as it is,
/// even outside the range; the next step then lands inside.
class Stepper : public QWidget {
    Q_OBJECT

public:
    struct Range {
        std::int64_t lowest;
        std::int64_t highest;
        std::int64_t step;
    };

    /// The name is what screen readers say for the number.
    Stepper(const QString &name, Range range, std::int64_t value);

    std::int64_t value() const { return m_value; }
    /// Not a step of the user's.
    void setValue(std::int64_t value);
    const Range &range() const { return m_range; }

Q_SIGNALS:
    /// The user has moved the number.
    void stepped(std::int64_t value);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    class Accessible;

    QWidget *button(const QString &sign, const QString &name, std::int64_t direction);
    void moveBy(std::int64_t direction);

    Range m_range;
    std::int64_t m_value;
    TextLabel *m_label;
};
