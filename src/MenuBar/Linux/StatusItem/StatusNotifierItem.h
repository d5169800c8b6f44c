// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include "MenuBar/Linux/StatusItem/StatusNotifierTypes.h"
#include "MenuBar/MenuBarExtra.h"

#include <QDBusConnection>
#include <QDBusContext>
#include <QObject>
#include <QPoint>
#include <QTimer>

class StatusNotifierItemAdaptor;

/// The item as status-area hosts see it on the bus. Announces a change when, and only when, there is one.
class StatusNotifierItem : public QObject, public QDBusContext {
    Q_OBJECT

public:
    /// Some hosts open the menu on a click only for items below /org/ayatana/NotificationItem/.
    static QString path();
    static QString menuPath();

    explicit StatusNotifierItem(QDBusConnection connection);

    const MenuBarLabel &label() const { return m_label; }
    void setLabel(const MenuBarLabel &label);
    /// For a host that may have missed them. GNOME's extension 59 (shells 45 to 48) reads text and description in time,
    /// but shows them at a signal alone: at XAyatanaNewLabel where the text is another than it has read, else at
    /// PropertiesChanged.
    void repeatTexts();

Q_SIGNALS:
    /// A host that draws no menu itself asks for one, in pixels of the screen.
    void menuRequested(const QPoint &position);

private:
    void announceProperties(const QVariantMap &changed);

    QDBusConnection m_connection;
    MenuBarLabel m_label;
    StatusNotifierItemAdaptor *m_adaptor = nullptr;
    QTimer m_onceMore; ///< announces the newest dot a second time
};
