// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include "MenuBar/Linux/BusMenu/DBusMenuTypes.h"

#include <QDBusAbstractAdaptor>

class DBusMenu;

/// The interface com.canonical.dbusmenu.
class DBusMenuAdaptor : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.canonical.dbusmenu")
    Q_CLASSINFO("D-Bus Introspection", ""
                                       "  <interface name=\"com.canonical.dbusmenu\">\n"
                                       "    <property name=\"Version\" type=\"u\" access=\"read\"/>\n"
                                       "    <property name=\"TextDirection\" type=\"s\" access=\"read\"/>\n"
                                       "    <property name=\"Status\" type=\"s\" access=\"read\"/>\n"
                                       "    <property name=\"IconThemePath\" type=\"as\" access=\"read\"/>\n"
                                       "    <method name=\"GetLayout\">\n"
                                       "      <arg name=\"parentId\" type=\"i\" direction=\"in\"/>\n"
                                       "      <arg name=\"recursionDepth\" type=\"i\" direction=\"in\"/>\n"
                                       "      <arg name=\"propertyNames\" type=\"as\" direction=\"in\"/>\n"
                                       "      <arg name=\"revision\" type=\"u\" direction=\"out\"/>\n"
                                       "      <arg name=\"layout\" type=\"(ia{sv}av)\" direction=\"out\"/>\n"
                                       "    </method>\n"
                                       "    <method name=\"GetGroupProperties\">\n"
                                       "      <arg name=\"ids\" type=\"ai\" direction=\"in\"/>\n"
                                       "      <arg name=\"propertyNames\" type=\"as\" direction=\"in\"/>\n"
                                       "      <arg name=\"properties\" type=\"a(ia{sv})\" direction=\"out\"/>\n"
                                       "    </method>\n"
                                       "    <method name=\"GetProperty\">\n"
                                       "      <arg name=\"id\" type=\"i\" direction=\"in\"/>\n"
                                       "      <arg name=\"name\" type=\"s\" direction=\"in\"/>\n"
                                       "      <arg name=\"value\" type=\"v\" direction=\"out\"/>\n"
                                       "    </method>\n"
                                       "    <method name=\"Event\">\n"
                                       "      <arg name=\"id\" type=\"i\" direction=\"in\"/>\n"
                                       "      <arg name=\"eventId\" type=\"s\" direction=\"in\"/>\n"
                                       "      <arg name=\"data\" type=\"v\" direction=\"in\"/>\n"
                                       "      <arg name=\"timestamp\" type=\"u\" direction=\"in\"/>\n"
                                       "    </method>\n"
                                       "    <method name=\"EventGroup\">\n"
                                       "      <arg name=\"events\" type=\"a(isvu)\" direction=\"in\"/>\n"
                                       "      <arg name=\"idErrors\" type=\"ai\" direction=\"out\"/>\n"
                                       "    </method>\n"
                                       "    <method name=\"AboutToShow\">\n"
                                       "      <arg name=\"id\" type=\"i\" direction=\"in\"/>\n"
                                       "      <arg name=\"needUpdate\" type=\"b\" direction=\"out\"/>\n"
                                       "    </method>\n"
                                       "    <method name=\"AboutToShowGroup\">\n"
                                       "      <arg name=\"ids\" type=\"ai\" direction=\"in\"/>\n"
                                       "      <arg name=\"updatesNeeded\" type=\"ai\" direction=\"out\"/>\n"
                                       "      <arg name=\"idErrors\" type=\"ai\" direction=\"out\"/>\n"
                                       "    </method>\n"
                                       "    <signal name=\"ItemsPropertiesUpdated\">\n"
                                       "      <arg name=\"updatedProps\" type=\"a(ia{sv})\"/>\n"
                                       "      <arg name=\"removedProps\" type=\"a(ias)\"/>\n"
                                       "    </signal>\n"
                                       "    <signal name=\"LayoutUpdated\">\n"
                                       "      <arg name=\"revision\" type=\"u\"/>\n"
                                       "      <arg name=\"parent\" type=\"i\"/>\n"
                                       "    </signal>\n"
                                       "  </interface>\n")
    Q_PROPERTY(uint Version READ version)
    Q_PROPERTY(QString TextDirection READ textDirection)
    Q_PROPERTY(QString Status READ status)
    Q_PROPERTY(QStringList IconThemePath READ iconThemePath)

public:
    explicit DBusMenuAdaptor(DBusMenu &menu);

    uint version() const { return 3; }
    QString textDirection() const;
    QString status() const;
    QStringList iconThemePath() const { return {}; }

    // Lists are spelt out from here on: the binding looks argument types up by name and knows no aliases.
public Q_SLOTS:
    uint GetLayout(int parentId, int recursionDepth, const QStringList &propertyNames, DBusMenuLayoutItem &layout);
    QList<DBusMenuItem> GetGroupProperties(const QList<int> &ids, const QStringList &propertyNames);
    QDBusVariant GetProperty(int id, const QString &name);
    void Event(int id, const QString &eventId, const QDBusVariant &data, uint timestamp);
    QList<int> EventGroup(const QList<DBusMenuEvent> &events);
    bool AboutToShow(int id);
    QList<int> AboutToShowGroup(const QList<int> &ids, QList<int> &idErrors);

Q_SIGNALS:
    void ItemsPropertiesUpdated(const QList<DBusMenuItem> &updatedProps, const QList<DBusMenuItemKeys> &removedProps);
    void LayoutUpdated(uint revision, int parent);

private:
    DBusMenu &m_menu;
};
