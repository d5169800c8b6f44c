// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QList>
#include <QRectF>
#include <QString>
#include <QStringList>

/// Plays the part of AppKit, Foundation and Network that the program speaks to, and lets a test play the user and the
/// system.
///
/// It knows AppKit only as its author has read of it. What it cannot know: how anything looks; whether AppKit's own
/// headers agree; in which order the real one closes a menu and sends the action (so the tests try both); what it does
/// while a menu is tracked besides holding back calls for other run loop modes; whether the system does what it is
/// asked for, such as bringing a program to the front; anything of threads. A chosen item's action goes to what
/// stands at the item's place when it is sent.
namespace AppKit {

/// Frees what was handed out since it was made, as each turn of the real run loop does.
class Pool {
public:
    Pool();
    ~Pool();
    Q_DISABLE_COPY_MOVE(Pool)

private:
    void *m_pool;
};

/// Objects alive that the program has made, by the names of their classes, or that it was given and keeps.
QStringList objects();

// The menu bar.
struct StatusItem {
    QString title;
    QString accessibilityTitle;
    QString autosaveName;
    QString font;
};
QList<StatusItem> statusItems();

// The menu of the one status item.
struct Item {
    QString title;
    QString font; ///< empty where the plain title is shown
    bool separator = false;
    bool enabled = false;
    const void *identity = nullptr;
};
QList<Item> menu();
/// The user opens it. Nothing happens where it is open.
void openMenu();
bool isMenuOpen();
/// It leaves the screen.
void closeMenu();
/// Sends the action of what stands at a place, if it can be chosen.
void sendAction(qsizetype index);

/// What the run loop waits in: the last also for a moment before and after a menu is on the screen.
enum class Mode { Default, ModalPanel, Tracking };
/// Makes the calls that are due in this mode; how many these were.
int runLoop(Mode mode = Mode::Default);

// The program among others, and the system's words to it.
QStringList requests(); ///< since the last time: "activate", "front", "hide", "unhide", "open file:///…"
quintptr view();        ///< of a window, as Qt hands it out
void finishLaunching();
void finishHiding();
/// The user opens the program's bundle again; whether the program hears it.
bool reopen();
void setRunning(qint64 process, const QString &bundle);
QStringList activities(); ///< reasons for which the system must not put the program to rest

// The machine.
void wake();
void tellPath(bool online); ///< to each monitor that runs; it is told when the main queue is served
int serveMainQueue();       ///< how many of these words somebody has looked at
qsizetype pathMonitors();

/// Where the last symbol was drawn, in pixels of its bitmap.
QRectF symbolPlace();

} // namespace AppKit
