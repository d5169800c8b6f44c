// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Controls/Boxes/RoundedBox.h"

class QPlainTextEdit;

/// A command to copy. Its lines never wrap: where they are too long they scroll sideways, without scroll bars.
/// It stands there indented; what is copied runs in a shell, whole or in part, because the indent of continued lines is
/// left out.
class CodeBlock : public RoundedBox {
    Q_OBJECT

public:
    explicit CodeBlock(const QString &command);

protected:
    bool event(QEvent *event) override;

private:
    void restyle();

    QPlainTextEdit *m_text;
};
