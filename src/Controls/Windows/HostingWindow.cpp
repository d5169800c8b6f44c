// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Controls/Windows/HostingWindow.h"

#include "Controls/AccessibleRole.h"
#include "Controls/Windows/ScreenRoom.h"
#include "Look/ColourPreference.h"
#include "Process/Activation.h"

#include <QEvent>
#include <QGuiApplication>
#include <QIcon>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QShortcut>
#include <QVBoxLayout>
#include <QWindow>

#include <algorithm>

namespace {

Qt::WindowFlags flagsFor(HostingWindow::Sizing sizing)
{
    const Qt::WindowFlags flags = Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                                  Qt::WindowSystemMenuHint | Qt::WindowMinimizeButtonHint | Qt::WindowCloseButtonHint;
    return sizing == HostingWindow::Sizing::Resizable ? flags | Qt::WindowMaximizeButtonHint : flags;
}

/// Shows the view as large as it asks to be, or scrolls it where the screen has no room for that.
class FittingArea : public QScrollArea {
public:
    explicit FittingArea(QWidget *view)
    {
        setFrameShape(NoFrame);
        setFocusPolicy(Qt::NoFocus); // the view's first field has the focus at once
        setWidget(view);
    }

    QSize sizeHint() const override
    {
        const QSize room = ScreenRoom::forContent(screen()).size();
        QSize size = wanted();
        if (size.height() > room.height())
            size.rwidth() += verticalScrollBar()->sizeHint().width();
        if (size.width() > room.width())
            size.rheight() += horizontalScrollBar()->sizeHint().height();
        return size.boundedTo(room);
    }

    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    bool event(QEvent *event) override
    {
        if (event->type() == QEvent::LayoutRequest) { // the view asks for another size
            widget()->resize(wanted().expandedTo(viewport()->size()));
            updateGeometry();
        }
        return QScrollArea::event(event);
    }

    void resizeEvent(QResizeEvent *event) override
    {
        widget()->resize(wanted().expandedTo(viewport()->size()));
        QScrollArea::resizeEvent(event);
    }

private:
    QSize wanted() const
    {
        QSize size = widget()->sizeHint().expandedTo(widget()->minimumSize());
        if (widget()->hasHeightForWidth())
            size.setHeight(std::max(widget()->minimumHeight(), widget()->heightForWidth(size.width())));
        return size;
    }
};

} // namespace

HostingWindow::HostingWindow(QWidget *view, const QString &title, QSize contentSize, Sizing sizing)
    : QWidget(nullptr, flagsFor(sizing)), m_content(view), m_leastSize(view->minimumSize())
{
    ColourPreference::follow();
    AccessibleRole::give(this, QAccessible::Window);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(title);
    // Taskbars on X11 ask the window; elsewhere the desktop entry or the bundle has the icon.
    setWindowIcon(QIcon::fromTheme(QGuiApplication::desktopFileName()));
    setScreen(ScreenRoom::pointed());
    auto *const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    if (sizing == Sizing::FitsContent) {
        view->setMinimumSize(view->minimumSize().expandedTo(contentSize));
        m_content = new FittingArea(view);
        m_leastSize = {0, 0}; // it asks the screen itself
        layout->setSizeConstraint(QLayout::SetFixedSize);
    }
    layout->addWidget(m_content);
    resize(contentSize);
    fitScreen();
    for (const QKeySequence &keys : {QKeySequence(Qt::Key_Escape), QKeySequence(Qt::CTRL | Qt::Key_W)})
        connect(new QShortcut(keys, this), &QShortcut::activated, this, &QWidget::close);
}

void HostingWindow::centre()
{
    layout()->activate(); // the size is known only now
    move(ScreenRoom::centre(size(), screen()));
}

void HostingWindow::bringToFront()
{
    if (isVisible() && isElsewhere(*windowHandle()))
        hide();
    show();
    raise();
    activateWindow();
    activateIgnoringOtherApps(winId());
}

void HostingWindow::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    connect(windowHandle(), &QWindow::screenChanged, this, &HostingWindow::followScreen, Qt::UniqueConnection);
    followScreen();
}

void HostingWindow::followScreen()
{
    disconnect(m_screenChange);
    m_screenChange = connect(screen(), &QScreen::availableGeometryChanged, this, [this] {
        fitScreen();
        moveIntoSight();
    });
    fitScreen();
}

void HostingWindow::fitScreen()
{
    const QSize room = ScreenRoom::forContent(screen()).size();
    m_content->setMinimumSize(m_leastSize.boundedTo(room));
    m_content->updateGeometry();
    layout()->activate();
    if (!isMaximized())
        resize(size().boundedTo(room));
}

/// A window that the user drags to another screen is left where it is.
void HostingWindow::moveIntoSight()
{
    const QRect area = screen()->availableGeometry();
    const QRect frame = frameGeometry();
    if (isMaximized() || area.contains(frame))
        return;
    const QPoint last = area.bottomRight() - QPoint(frame.width() - 1, frame.height() - 1);
    move(std::max(std::min(frame.x(), last.x()), area.x()), std::max(std::min(frame.y(), last.y()), area.y()));
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
