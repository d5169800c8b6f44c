// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Controls/Windows/HostingWindow.h"

#include "Controls/AccessibleRole.h"
#include "Process/Activation.h"

#include <QCursor>
#include <QEvent>
#include <QGuiApplication>
#include <QIcon>
#include <QScreen>
#include <QShortcut>
#include <QStyle>
#include <QVBoxLayout>

#include <algorithm>

namespace {

Qt::WindowFlags flagsFor(HostingWindow::Sizing sizing)
{
    const Qt::WindowFlags flags = Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                                  Qt::WindowSystemMenuHint | Qt::WindowMinimizeButtonHint | Qt::WindowCloseButtonHint;
    return sizing == HostingWindow::Sizing::Resizable ? flags | Qt::WindowMaximizeButtonHint : flags;
}

} // namespace

HostingWindow::HostingWindow(QWidget *view, const QString &title, QSize contentSize, Sizing sizing)
    : QWidget(nullptr, flagsFor(sizing))
{
    AccessibleRole::give(this, QAccessible::Window);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(title);
    // Taskbars on X11 ask the window; elsewhere the desktop entry or the bundle has the icon.
    setWindowIcon(QIcon::fromTheme(QGuiApplication::desktopFileName()));
    auto *const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(view);
    if (sizing == Sizing::FitsContent) {
        view->setMinimumSize(view->minimumSize().expandedTo(contentSize));
        layout->setSizeConstraint(QLayout::SetFixedSize);
    } else {
        resize(contentSize);
    }
    for (const QKeySequence &keys : {QKeySequence(Qt::Key_Escape), QKeySequence(Qt::CTRL | Qt::Key_W)})
        connect(new QShortcut(keys, this), &QShortcut::activated, this, &QWidget::close);
}

void HostingWindow::centre()
{
    const QScreen *const pointed = QGuiApplication::screenAt(QCursor::pos());
    const QRect available = (pointed ? pointed : QGuiApplication::primaryScreen())->availableGeometry();
    layout()->activate(); // the size is known only now
    const QRect centred = QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, size(), available);
    // The title bar of a window larger than the screen stays within reach.
    move(std::max(centred.x(), available.x()), std::max(centred.y(), available.y()));
}

void HostingWindow::bringToFront()
{
    show();
    raise();
    activateWindow();
    activateIgnoringOtherApps();
}

void HostingWindow::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() != QEvent::FontChange)
        return;
    // Qt tells windows alone that the system font has changed; texts in a style of their own have to follow.
    QEvent changed(QEvent::ApplicationFontChange);
    const auto children = findChildren<QWidget *>();
    for (QWidget *child : children)
        QCoreApplication::sendEvent(child, &changed);
}
