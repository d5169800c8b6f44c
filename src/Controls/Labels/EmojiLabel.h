// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Controls/Labels/TextLabel.h"

/// A text whose emoji are in colour where it asks for that. Qt before 6.9 draws a character such as the warning sign
/// from the text's own font, as an outline, and does not heed the variation selector behind it. This class can go with
/// them.
class EmojiLabel : public TextLabel {
    Q_OBJECT

public:
    using TextLabel::TextLabel;

protected:
    void paintEvent(QPaintEvent *event) override;
};
