// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "MenuBar/Linux/BusMenu/DBusMenu.h"

#include "MenuBar/Linux/BusMenu/DBusMenuAdaptor.h"

#include <QSet>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

QVariantMap propertiesOf(const MenuRow &row, Underscores underscores)
{
    const bool divider = row.kind == MenuRow::Kind::Divider;
    // Always all of them: some hosts keep the old value of a property that is left out.
    return {
        {u"type"_s, divider ? u"separator"_s : u"standard"_s},
        {u"label"_s, menuLabel(row.text, underscores)},
        // What a screen reader reads; libdbusmenu's GTK client would read the label's first text for ever.
        {u"accessible-desc"_s, busText(row.text)},
        {u"enabled"_s, row.isCommand()},
        {u"visible"_s, true},
    };
}

/// An empty list of names means every property.
QVariantMap chosen(const QVariantMap &properties, const QStringList &names)
{
    if (names.isEmpty())
        return properties;
    QVariantMap some;
    for (auto it = properties.cbegin(); it != properties.cend(); ++it) {
        if (names.contains(it.key()))
            some.insert(it.key(), it.value());
    }
    return some;
}

bool lookAlike(const MenuRows &rows, const MenuRows &others)
{
    return std::ranges::equal(
        rows, others, [](const MenuRow &a, const MenuRow &b) { return a.kind == b.kind && a.text == b.text; });
}

} // namespace

DBusMenu::DBusMenu(QDBusConnection connection, const QString &path)
{
    registerDBusMenuTypes();
    m_root.properties = {{u"children-display"_s, u"submenu"_s}};
    m_adaptor = new DBusMenuAdaptor(*this);
    connection.registerObject(path, this, QDBusConnection::ExportAdaptors);
}

void DBusMenu::setRows(const MenuRows &rows)
{
    const MenuRows before = std::exchange(m_rows, rows);
    if (!lookAlike(rows, before))
        announceChanges();
}

void DBusMenu::setUnderscores(Underscores underscores)
{
    m_underscores = underscores;
    announceChanges();
}

void DBusMenu::announceChanges()
{
    const QList<DBusMenuItem> before = std::exchange(m_items, itemsOfRows());
    if (const QList<DBusMenuItem> changes = takeChanges(); !changes.isEmpty())
        Q_EMIT m_adaptor->ItemsPropertiesUpdated(changes, {});
    if (!std::ranges::equal(before, m_items, {}, &DBusMenuItem::id, &DBusMenuItem::id))
        Q_EMIT m_adaptor->LayoutUpdated(++m_revision, m_root.id);
}

QList<DBusMenuItem> DBusMenu::takeChanges()
{
    QList<DBusMenuItem> changes;
    for (const DBusMenuItem &item : std::as_const(m_items)) {
        const QVariantMap before = std::exchange(m_known[item.id], item.properties);
        if (before.isEmpty() || before == item.properties)
            continue;
        DBusMenuItem change = item;
        change.properties.removeIf([&](const auto &entry) { return before.value(entry.key()) == *entry; });
        changes << change;
    }
    return changes;
}

QList<DBusMenuItem> DBusMenu::itemsOfRows()
{
    QList<DBusMenuItem> items;
    const std::vector<int> ids = m_ids.of(m_rows);
    for (std::size_t i = 0; i < ids.size(); ++i)
        items << DBusMenuItem{.id = ids[i], .properties = propertiesOf(m_rows[i], m_underscores)};
    return items;
}

const DBusMenuItem *DBusMenu::find(int id) const
{
    if (id == m_root.id)
        return &m_root;
    const auto found = std::ranges::find(m_items, id, &DBusMenuItem::id);
    return found != m_items.end() ? &*found : nullptr;
}

DBusMenuLayoutItem DBusMenu::layout(int parentId, int recursionDepth, const QStringList &propertyNames) const
{
    const DBusMenuItem *const parent = find(parentId);
    if (!parent) {
        refuse(u"No such item"_s);
        return {};
    }
    const auto laidOut = [&](const DBusMenuItem &item) {
        return DBusMenuLayoutItem{.id = item.id, .properties = chosen(item.properties, propertyNames), .children = {}};
    };
    DBusMenuLayoutItem layout = laidOut(*parent);
    if (parent == &m_root && recursionDepth != 0)
        std::ranges::transform(m_items, std::back_inserter(layout.children), laidOut);
    return layout;
}

QList<DBusMenuItem> DBusMenu::properties(const QList<int> &ids, const QStringList &propertyNames) const
{
    // Each item once, however often it is asked for; no ids means every item.
    const QSet<int> wanted(ids.begin(), ids.end());
    QList<DBusMenuItem> answer;
    const auto add = [&](const DBusMenuItem &item) {
        if (wanted.isEmpty() || wanted.contains(item.id))
            answer << DBusMenuItem{.id = item.id, .properties = chosen(item.properties, propertyNames)};
    };
    add(m_root);
    std::ranges::for_each(m_items, add);
    return answer;
}

QVariant DBusMenu::property(int id, const QString &name) const
{
    const DBusMenuItem *const item = find(id);
    if (!item || !item->properties.contains(name)) {
        refuse(item ? u"No such property"_s : u"No such item"_s);
        return QString();
    }
    return item->properties.value(name);
}

void DBusMenu::happened(const DBusMenuEvent &event)
{
    if (find(event.id))
        chooseLater(event);
    else
        refuse(u"No such item"_s);
}

QList<int> DBusMenu::happened(const QList<DBusMenuEvent> &events)
{
    QList<int> unknown;
    for (const DBusMenuEvent &event : events) {
        if (find(event.id))
            chooseLater(event);
        else
            unknown << event.id;
    }
    if (!events.isEmpty() && unknown.size() == events.size())
        refuse(u"No such items"_s);
    return unknown;
}

bool DBusMenu::aboutToShow(int id) const
{
    if (!find(id))
        refuse(u"No such item"_s);
    return false; // never out of date: a true would have the host read all of it again
}

QList<int> DBusMenu::aboutToShow(const QList<int> &ids) const
{
    QList<int> unknown;
    std::ranges::copy_if(ids, std::back_inserter(unknown), [this](int id) { return !find(id); });
    if (!ids.isEmpty() && unknown.size() == ids.size())
        refuse(u"No such items"_s);
    return unknown;
}

void DBusMenu::chooseLater(const DBusMenuEvent &event)
{
    const auto item = std::ranges::find(m_items, event.id, &DBusMenuItem::id);
    if (event.eventId != "clicked"_L1 || item == m_items.end())
        return;
    // After the reply, and as the row was when the user chose it.
    const MenuRow row = m_rows.at(static_cast<std::size_t>(item - m_items.begin()));
    QMetaObject::invokeMethod(
        this, [row] { choose(row); }, Qt::QueuedConnection);
}

void DBusMenu::refuse(const QString &what) const { sendErrorReply(QDBusError::InvalidArgs, what); }
