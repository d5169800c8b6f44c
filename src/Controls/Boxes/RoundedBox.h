// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Look/Theme.h"

#include <QWidget>

/// A box with round corners, lightly tinted and outlined; what stands in it is laid out by its owner.
class RoundedBox : public QWidget {
    Q_OBJECT

public:
    explicit RoundedBox(Theme::Box look) : m_look(look) {}

    static void paint(QPainter &painter, const QRect &box, const Theme::BoxColours &colours);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    Theme::Box m_look;
};
