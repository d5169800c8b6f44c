// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "MenuBar/Linux/StatusItem/StatusNotifierItem.h"

#include "MenuBar/Linux/BusMenu/BusText.h"
#include "MenuBar/Linux/StatusItem/StatusNotifierItemAdaptor.h"

#include <QDBusMessage>

#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

QString StatusNotifierItem::path() { return u"/org/ayatana/NotificationItem/vantelo"_s; }

QString StatusNotifierItem::menuPath() { return path() + u"/Menu"_s; }

StatusNotifierItem::StatusNotifierItem(QDBusConnection connection) : m_connection(std::move(connection))
{
    registerStatusNotifierTypes();
    m_adaptor = new StatusNotifierItemAdaptor(*this);
    m_connection.registerObject(path(), this, QDBusConnection::ExportAdaptors);
    // GNOME drops a new icon while it still draws the last one: the dot of a delivering account could stay white.
    m_onceMore.setSingleShot(true);
    m_onceMore.setInterval(10s);
    connect(&m_onceMore, &QTimer::timeout, m_adaptor, &StatusNotifierItemAdaptor::NewIcon);
}

void StatusNotifierItem::setLabel(const MenuBarLabel &label)
{
    MenuBarLabel next = label;
    next.text = busText(next.text);
    next.accessibleDescription = busText(next.accessibleDescription);
    const MenuBarLabel before = std::exchange(m_label, next);

    if (m_label.dot != before.dot) {
        Q_EMIT m_adaptor->NewIcon();
        m_onceMore.start();
    }
    if (m_label.text != before.text)
        Q_EMIT m_adaptor->XAyatanaNewLabel(m_label.text, m_adaptor->labelGuide());
    if (m_label.whole() != before.whole())
        Q_EMIT m_adaptor->NewToolTip();
    // NewIcon has hosts read the description, too. GNOME draws the icon at either signal, and after two in a row the
    // picture that it found at the first could stay. There is no other signal for the description alone.
    if (m_label.dot == before.dot && m_label.accessibleDescription != before.accessibleDescription)
        announceProperties({{u"IconAccessibleDesc"_s, m_label.accessibleDescription}});
}

void StatusNotifierItem::repeatTexts()
{
    Q_EMIT m_adaptor->XAyatanaNewLabel(m_label.text, m_adaptor->labelGuide());
    announceProperties({{u"XAyatanaLabel"_s, m_label.text}, {u"IconAccessibleDesc"_s, m_label.accessibleDescription}});
}

void StatusNotifierItem::announceProperties(const QVariantMap &changed)
{
    QDBusMessage signal =
        QDBusMessage::createSignal(path(), u"org.freedesktop.DBus.Properties"_s, u"PropertiesChanged"_s);
    signal << u"org.kde.StatusNotifierItem"_s << changed << QStringList();
    m_connection.send(signal);
}
