// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include "MenuBar/Linux/BusMenu/BusText.h"
#include "MenuBar/Linux/BusMenu/DBusMenuItemIds.h"
#include "MenuBar/Linux/BusMenu/DBusMenuTypes.h"
#include "MenuBar/MenuBarExtra.h"

#include <QDBusConnection>
#include <QDBusContext>
#include <QHash>
#include <QObject>

class DBusMenuAdaptor;

/// The rows as a menu on the bus, which the host draws. Changed texts go out as such; a new layout is announced
/// only when rows come or go, because many hosts close an open menu then. Nothing here blocks: some panels
/// stand still until they are answered.
class DBusMenu : public QObject, protected QDBusContext {
    Q_OBJECT

public:
    DBusMenu(QDBusConnection connection, const QString &path);

    void setRows(const MenuRows &rows);
    void setUnderscores(Underscores underscores);

    // The calls of the bus; a false id is answered with an error.
    uint revision() const { return m_revision; }
    DBusMenuLayoutItem layout(int parentId, int recursionDepth, const QStringList &propertyNames) const;
    QList<DBusMenuItem> properties(const QList<int> &ids, const QStringList &propertyNames) const;
    QVariant property(int id, const QString &name) const;
    void happened(const DBusMenuEvent &event);
    /// Gives the ids that do not exist.
    QList<int> happened(const QList<DBusMenuEvent> &events);
    bool aboutToShow(int id) const;
    QList<int> aboutToShow(const QList<int> &ids) const;

private:
    void announceChanges();
    /// What hosts that know the items from earlier do not know yet.
    QList<DBusMenuItem> takeChanges();
    QList<DBusMenuItem> itemsOfRows();
    const DBusMenuItem *find(int id) const;
    void chooseLater(const DBusMenuEvent &event);
    void refuse(const QString &what) const;

    MenuRows m_rows;
    QList<DBusMenuItem> m_items; ///< one a row
    /// The properties last announced for each id, also of rows that are away: hosts do not ask again about ids
    /// that come back.
    QHash<int, QVariantMap> m_known;
    DBusMenuItem m_root;
    DBusMenuItemIds m_ids;
    Underscores m_underscores = Underscores::EveryPair;
    uint m_revision = 1;
    DBusMenuAdaptor *m_adaptor = nullptr;
};
