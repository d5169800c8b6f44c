// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QAbstractButton>
#include <QUrl>

/// A text that opens a web page in the user's browser.
class LinkLabel : public QAbstractButton {
    Q_OBJECT

public:
    /// An address that does not parse is a programming error and ends the program.
    LinkLabel(const QString &text, const QString &address);

    const QUrl &destination() const { return m_destination; }
    QSize sizeHint() const override;

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void restyle();

    QUrl m_destination;
};
