// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Controls/Labels/TextLabel.h"

/// A text, wrapped if need be, with a mark before its first line. The mark is drawn and not spoken.
class MarkedLabel : public TextLabel {
    Q_OBJECT

public:
    MarkedLabel(const QString &text, TextStyle style);

protected:
    virtual QSize markSize() const = 0;
    /// Where the text begins.
    virtual int textLeft() const = 0;
    virtual void paintMark(QPainter &painter, const QRect &place) const = 0;

    /// To be called once the mark is known.
    void makeRoom();
    void changeEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
};

/// "• Text", the bullet in the secondary colour.
class BulletLabel : public MarkedLabel {
    Q_OBJECT

public:
    explicit BulletLabel(const QString &text);

protected:
    QSize markSize() const override;
    int textLeft() const override;
    void paintMark(QPainter &painter, const QRect &place) const override;
};

/// Stands where the bullet stands in a line that has none.
class BulletSpace : public QWidget {
    Q_OBJECT

public:
    BulletSpace();

    QSize sizeHint() const override;

protected:
    bool event(QEvent *event) override;
};

/// A system symbol before a text, both in the same colour. The text begins where that of bullet lines does which stand
/// below it, indented; the symbol is as large as the room before the text allows.
class SymbolLabel : public MarkedLabel {
    Q_OBJECT
    Q_PROPERTY(QString symbolName READ symbolName CONSTANT)

public:
    SymbolLabel(QString symbolName, const QString &text, TextStyle style);

    /// The indent of the lines below.
    static constexpr int lineIndent = 8;

    const QString &symbolName() const { return m_symbolName; }

protected:
    QSize markSize() const override;
    int textLeft() const override;
    void paintMark(QPainter &painter, const QRect &place) const override;

private:
    QString m_symbolName;
};
