// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QWidget>

/// A thin line across, weaker than any text.
class Divider : public QWidget {
    Q_OBJECT

public:
    Divider();

protected:
    void paintEvent(QPaintEvent *event) override;
};
