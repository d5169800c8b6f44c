// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QLineEdit>

/// The field for the access token: masked, and silent towards everything outside the program. A masked line
/// edit alone would tell each typed or pasted character to programs that listen on the accessibility bus.
class TokenField : public QLineEdit {
    Q_OBJECT

public:
    TokenField();

    QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;

protected:
    void keyPressEvent(QKeyEvent *event) override;
};
