// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include "MenuBar/Linux/StatusItem/StatusNotifierItem.h"

#include <QDBusAbstractAdaptor>
#include <QDBusObjectPath>

/// The interface org.kde.StatusNotifierItem. Activate answers but is not introspected: a host that finds it
/// waits for a second click before it opens the menu.
class StatusNotifierItemAdaptor : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
    Q_CLASSINFO("D-Bus Introspection", ""
                                       "  <interface name=\"org.kde.StatusNotifierItem\">\n"
                                       "    <property name=\"Id\" type=\"s\" access=\"read\"/>\n"
                                       "    <property name=\"Title\" type=\"s\" access=\"read\"/>\n"
                                       "    <property name=\"Category\" type=\"s\" access=\"read\"/>\n"
                                       "    <property name=\"Status\" type=\"s\" access=\"read\"/>\n"
                                       "    <property name=\"WindowId\" type=\"i\" access=\"read\"/>\n"
                                       "    <property name=\"ItemIsMenu\" type=\"b\" access=\"read\"/>\n"
                                       "    <property name=\"Menu\" type=\"o\" access=\"read\"/>\n"
                                       "    <property name=\"IconThemePath\" type=\"s\" access=\"read\"/>\n"
                                       "    <property name=\"IconName\" type=\"s\" access=\"read\"/>\n"
                                       "    <property name=\"IconPixmap\" type=\"a(iiay)\" access=\"read\"/>\n"
                                       "    <property name=\"IconAccessibleDesc\" type=\"s\" access=\"read\"/>\n"
                                       "    <property name=\"OverlayIconName\" type=\"s\" access=\"read\"/>\n"
                                       "    <property name=\"OverlayIconPixmap\" type=\"a(iiay)\" access=\"read\"/>\n"
                                       "    <property name=\"AttentionIconName\" type=\"s\" access=\"read\"/>\n"
                                       "    <property name=\"AttentionIconPixmap\" type=\"a(iiay)\" access=\"read\"/>\n"
                                       "    <property name=\"AttentionMovieName\" type=\"s\" access=\"read\"/>\n"
                                       "    <property name=\"AttentionAccessibleDesc\" type=\"s\" access=\"read\"/>\n"
                                       "    <property name=\"ToolTip\" type=\"(sa(iiay)ss)\" access=\"read\"/>\n"
                                       "    <property name=\"XAyatanaLabel\" type=\"s\" access=\"read\"/>\n"
                                       "    <property name=\"XAyatanaLabelGuide\" type=\"s\" access=\"read\"/>\n"
                                       "    <property name=\"XAyatanaOrderingIndex\" type=\"u\" access=\"read\"/>\n"
                                       "    <method name=\"SecondaryActivate\">\n"
                                       "      <arg name=\"x\" type=\"i\" direction=\"in\"/>\n"
                                       "      <arg name=\"y\" type=\"i\" direction=\"in\"/>\n"
                                       "    </method>\n"
                                       "    <method name=\"ContextMenu\">\n"
                                       "      <arg name=\"x\" type=\"i\" direction=\"in\"/>\n"
                                       "      <arg name=\"y\" type=\"i\" direction=\"in\"/>\n"
                                       "    </method>\n"
                                       "    <method name=\"Scroll\">\n"
                                       "      <arg name=\"delta\" type=\"i\" direction=\"in\"/>\n"
                                       "      <arg name=\"orientation\" type=\"s\" direction=\"in\"/>\n"
                                       "    </method>\n"
                                       "    <method name=\"ProvideXdgActivationToken\">\n"
                                       "      <arg name=\"token\" type=\"s\" direction=\"in\"/>\n"
                                       "    </method>\n"
                                       "    <signal name=\"NewIcon\"/>\n"
                                       "    <signal name=\"NewToolTip\"/>\n"
                                       "    <signal name=\"XAyatanaNewLabel\">\n"
                                       "      <arg name=\"label\" type=\"s\"/>\n"
                                       "      <arg name=\"guide\" type=\"s\"/>\n"
                                       "    </signal>\n"
                                       "  </interface>\n")
    Q_PROPERTY(QString Id READ id)
    Q_PROPERTY(QString Title READ title)
    Q_PROPERTY(QString Category READ category)
    Q_PROPERTY(QString Status READ status)
    Q_PROPERTY(int WindowId READ windowId)
    Q_PROPERTY(bool ItemIsMenu READ itemIsMenu)
    Q_PROPERTY(QDBusObjectPath Menu READ menu)
    Q_PROPERTY(QString IconThemePath READ nothing)
    Q_PROPERTY(QString IconName READ iconName)
    Q_PROPERTY(IconPixmaps IconPixmap READ iconPixmap)
    Q_PROPERTY(QString IconAccessibleDesc READ iconAccessibleDesc)
    Q_PROPERTY(QString OverlayIconName READ nothing)
    Q_PROPERTY(IconPixmaps OverlayIconPixmap READ noPixmap)
    Q_PROPERTY(QString AttentionIconName READ nothing)
    Q_PROPERTY(IconPixmaps AttentionIconPixmap READ noPixmap)
    Q_PROPERTY(QString AttentionMovieName READ nothing)
    Q_PROPERTY(QString AttentionAccessibleDesc READ nothing)
    Q_PROPERTY(StatusToolTip ToolTip READ toolTip)
    Q_PROPERTY(QString XAyatanaLabel READ label)
    Q_PROPERTY(QString XAyatanaLabelGuide READ labelGuide)
    Q_PROPERTY(uint XAyatanaOrderingIndex READ orderingIndex)

public:
    explicit StatusNotifierItemAdaptor(StatusNotifierItem &item);

    QString id() const;
    QString title() const;
    QString category() const;
    QString status() const;
    int windowId() const { return 0; }
    bool itemIsMenu() const { return true; }
    QDBusObjectPath menu() const;
    QString iconName() const;
    IconPixmaps iconPixmap() const;
    QString iconAccessibleDesc() const;
    StatusToolTip toolTip() const;
    QString label() const;
    QString labelGuide() const;
    uint orderingIndex() const { return 0; }
    QString nothing() const { return {}; }
    IconPixmaps noPixmap() const { return {}; }

public Q_SLOTS:
    void Activate(int x, int y);
    void SecondaryActivate(int x, int y);
    void ContextMenu(int x, int y);
    void Scroll(int delta, const QString &orientation);
    void ProvideXdgActivationToken(const QString &token);

Q_SIGNALS:
    void NewIcon();
    void NewToolTip();
    void XAyatanaNewLabel(const QString &label, const QString &guide);

private:
    StatusNotifierItem &m_item;
};
