// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QWidget>

/// An ordinary window around one view. It is deleted when it is closed; Escape and Ctrl+W close it. It is never larger
/// than its screen has room for, also where that changes or is another one.
class HostingWindow : public QWidget {
    Q_OBJECT

public:
    enum class Sizing {
        FitsContent, ///< as large as the content needs, at least the given size; not resizable
        Resizable,   ///< the given size at first, never below the view's minimum
    };

    HostingWindow(QWidget *view, const QString &title, QSize contentSize, Sizing sizing);

    /// Puts the window in the centre of the screen that the user is at.
    void centre();
    void bringToFront();

protected:
    void changeEvent(QEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void followScreen();
    void fitScreen();
    void moveIntoSight();

    QWidget *m_content;
    QSize m_leastSize; ///< that the view asks for, where the screen has room for it
    QMetaObject::Connection m_screenChange;
};
