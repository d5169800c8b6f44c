// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Look/Theme.h"

#include <QWidget>

/// The outcome of a connection test: a symbol and a message of at most two lines, cut with an ellipsis. The
/// whole message is there for screen readers and as a tool tip.
class ResultRow : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QString text READ text)
    Q_PROPERTY(QString symbolName READ symbolName CONSTANT)

public:
    /// Hidden at first. The meaning is what screen readers say for the symbol where there is no message.
    ResultRow(QString symbolName, QString meaning, Theme::Ink ink, int gapBelow);

    const QString &text() const { return m_text; }
    const QString &symbolName() const { return m_symbolName; }

    /// Shows the message and has it spoken.
    void announce(const QString &text);

    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    struct Shown {
        QStringList lines;
        bool cut = false;
    };

    Shown shown(int width) const;
    void updateToolTip();
    int symbolSide() const { return fontMetrics().height(); }
    int textLeft() const;

    QString m_symbolName;
    QString m_meaning;
    Theme::Ink m_ink;
    QString m_text;
    QString m_visibleText; ///< without blank lines at its ends
};
