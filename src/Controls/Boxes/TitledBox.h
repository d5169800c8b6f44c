// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QWidget>

/// A title above an outlined box; what stands in the box is laid out by its owner, within the contents' margins. Both
/// begin at the widget's left edge. Not QGroupBox, whose frame begins beside it in most styles and is nearly invisible
/// in Fusion's dark palettes.
class TitledBox : public QWidget {
    Q_OBJECT

public:
    explicit TitledBox(const QString &title);

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    int boxTop() const;
    void makeRoom() { setContentsMargins(0, boxTop(), 0, 0); }

    QString m_title;
};
