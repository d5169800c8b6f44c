// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Contrast.h"
#include "TestSessionBus.h"
#include "Views/WindowManager.h"
#include "WindowTree.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QTest>

/// The settings of a desktop portal, on a connection of its own.
class FakePortal : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    explicit FakePortal(uint scheme) : m_scheme(scheme)
    {
        m_bus.registerObject(QStringLiteral("/org/freedesktop/portal/desktop"), this, QDBusConnection::ExportAllSlots);
        m_bus.registerService(QStringLiteral("org.freedesktop.portal.Desktop"));
    }

    ~FakePortal() override { QDBusConnection::disconnectFromBus(QStringLiteral("portal")); }
    Q_DISABLE_COPY_MOVE(FakePortal)

    void change(uint scheme)
    {
        m_scheme = scheme;
        QDBusMessage changed = QDBusMessage::createSignal(QStringLiteral("/org/freedesktop/portal/desktop"),
            QStringLiteral("org.freedesktop.portal.Settings"), QStringLiteral("SettingChanged"));
        changed << QStringLiteral("org.freedesktop.appearance") << QStringLiteral("color-scheme")
                << QVariant::fromValue(QDBusVariant(QVariant(scheme)));
        m_bus.send(changed);
    }

    int calls() const { return m_calls; }

public Q_SLOTS:
    QDBusVariant Read(const QString &, const QString &)
    {
        ++m_calls;
        return QDBusVariant(QVariant::fromValue(QDBusVariant(QVariant(m_scheme)))); // wrapped twice, as the real one
    }

private:
    QDBusConnection m_bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("portal"));
    uint m_scheme;
    int m_calls = 0;
};

namespace DarkPreference {

/// The window's ground as it is painted.
inline QColor ground(QWidget *window) { return window->grab().toImage().pixelColor(2, 2); }

inline bool isDark(QWidget *window) { return luminance(ground(window)) < 0.1; }

inline QWidget *openGuide()
{
    WindowManager::shared().openSetupGuide();
    return WindowTree::windows(QStringLiteral("Setup Guide")).value(0);
}

} // namespace DarkPreference
