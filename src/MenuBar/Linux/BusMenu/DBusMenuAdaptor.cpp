// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "MenuBar/Linux/BusMenu/DBusMenuAdaptor.h"

#include "MenuBar/Linux/BusMenu/DBusMenu.h"

using namespace Qt::StringLiterals;

DBusMenuAdaptor::DBusMenuAdaptor(DBusMenu &menu) : QDBusAbstractAdaptor(&menu), m_menu(menu) {}

QString DBusMenuAdaptor::textDirection() const { return u"ltr"_s; }

QString DBusMenuAdaptor::status() const { return u"normal"_s; }

uint DBusMenuAdaptor::GetLayout(
    int parentId, int recursionDepth, const QStringList &propertyNames, DBusMenuLayoutItem &layout)
{
    layout = m_menu.layout(parentId, recursionDepth, propertyNames);
    return m_menu.revision();
}

QList<DBusMenuItem> DBusMenuAdaptor::GetGroupProperties(const QList<int> &ids, const QStringList &propertyNames)
{
    return m_menu.properties(ids, propertyNames);
}

QDBusVariant DBusMenuAdaptor::GetProperty(int id, const QString &name)
{
    return QDBusVariant(m_menu.property(id, name));
}

void DBusMenuAdaptor::Event(int id, const QString &eventId, const QDBusVariant &data, uint timestamp)
{
    m_menu.happened({.id = id, .eventId = eventId, .data = data, .timestamp = timestamp});
}

QList<int> DBusMenuAdaptor::EventGroup(const QList<DBusMenuEvent> &events) { return m_menu.happened(events); }

bool DBusMenuAdaptor::AboutToShow(int id) { return m_menu.aboutToShow(id); }

QList<int> DBusMenuAdaptor::AboutToShowGroup(const QList<int> &ids, QList<int> &idErrors)
{
    idErrors = m_menu.aboutToShow(ids);
    return {};
}
