// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QTimer>

#include <chrono>
#include <functional>
#include <span>

class QDBusMessage;
class QDBusPendingCall;

/// The item's registration with one watcher, for as long as that one lives. An answer alone is not believed: a watcher
/// that has just started may take an item and lose it. So the item is registered again, after pauses that grow, until
/// the watcher lists it, and never again after that: some hosts are confused by an item that they hear of twice.
class StatusNotifierRegistration : public QObject {
    Q_OBJECT

public:
    /// `watcher` is a unique bus name.
    StatusNotifierRegistration(QDBusConnection connection, QString watcher, QString itemPath);

Q_SIGNALS:
    /// The watcher lists the item. Comes a few times, after pauses that grow and each time just after the watcher has
    /// answered: a host may be long in making ready to hear the item, and all that it was sent while it stood still
    /// reaches it at once.
    void confirmed();

private Q_SLOTS:
    void lookSooner();

private:
    void registerItem();
    void look();
    bool isListedIn(const QDBusPendingCall &answer) const;
    void proceed(bool isListed);
    void ask(const QDBusMessage &question, const std::function<void(const QDBusPendingCall &)> &then);

    QDBusConnection m_connection;
    QString m_watcher;
    QString m_itemPath;
    QTimer m_untilNextLook;
    bool m_wasAccepted = false; ///< the last registration was answered without an error
    bool m_hadTime = false;     ///< to list the item: a pause follows the last registration, or has followed it
    bool m_isListed = false;    ///< once and for all
    std::chrono::milliseconds m_patience;
    std::span<const std::chrono::milliseconds> m_pausesToCome;
};
