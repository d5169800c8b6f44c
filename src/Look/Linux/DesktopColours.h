// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QDBusMessage>
#include <QObject>

#include <functional>

/// Whether the user prefers dark windows, as the desktop portal tells, or GNOME's own setting where no portal does. It
/// asks when it is made, without waiting, and hears of changes.
class DesktopColours : public QObject {
    Q_OBJECT

public:
    explicit DesktopColours(QObject *parent);

    /// Calls the function with true for dark, whenever something is known; at first on a later turn of the event loop.
    void onPreference(std::function<void(bool)> prefer) { m_prefer = std::move(prefer); }

private Q_SLOTS:
    void onPortalSettingChanged(const QDBusMessage &changed);
    void onGnomeSettingsChanged(const QString &prefix, const QStringList &keys);

private:
    void askPortal();
    void followGnome();
    void askGnome();

    std::function<void(bool)> m_prefer;
    bool m_portalTells = false;
};
