// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Look/TextStyle.h"
#include "Look/Theme.h"

#include <QLabel>

/// A text of a window: plain, never markup, in one of the text styles. Follows the system's font and palette.
class TextLabel : public QLabel {
    Q_OBJECT

public:
    explicit TextLabel(const QString &text, TextStyle style = TextStyle::Body, Theme::Ink ink = Theme::Ink::Primary);

    /// Another weight than the style's own.
    void setWeight(QFont::Weight weight);

protected:
    bool event(QEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void restyle();
    void recolour();

    TextStyle m_style;
    Theme::Ink m_ink;
    QFont::Weight m_weight;
};
