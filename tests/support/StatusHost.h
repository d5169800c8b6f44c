// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QProcess>

/// A desktop's status area on the session bus, in a process and on a D-Bus library of its own; see
/// status_host.py. It has no watcher at first. This process answers calls while it waits.
class StatusHost {
public:
    StatusHost();
    StatusHost(const StatusHost &) = delete;
    StatusHost &operator=(const StatusHost &) = delete;
    ~StatusHost();

    /// Calls a method of the host; fails the test, and gives undefined, where that raises.
    QJsonValue ask(const QString &call, const QJsonArray &with = {});

    /// Whether the answer to the call under way comes while this process handles no calls.
    bool answersByItself() { return m_process.canReadLine() || m_process.waitForReadyRead(5000); }

    void startWatcher() { ask(QStringLiteral("start_watcher")); }
    void startGnomeShell() { ask(QStringLiteral("start_watcher"), {true}); }
    void stopWatcher() { ask(QStringLiteral("stop_watcher")); }
    /// How the watcher treats registrations; see status_host.py.
    void set(const QString &trait, const QJsonValue &value) { ask(QStringLiteral("set"), {trait, value}); }
    /// Sender and path of every registration so far.
    QJsonArray registrations() { return ask(QStringLiteral("registered")).toArray(); }
    bool hasItem() { return !registrations().isEmpty(); }

    QJsonValue property(const QString &name) { return ask(QStringLiteral("property"), {name})[1]; }
    /// The text as a host has it that draws it at this signal alone; undefined before the first that it heard.
    QJsonValue textDrawnAt(const QString &signal)
    {
        return ask(QStringLiteral("get"), {QStringLiteral("drawn_text")})[signal];
    }
    /// The times, in seconds, at which a text was signalled that was known already.
    QJsonArray reminders() { return ask(QStringLiteral("get"), {QStringLiteral("reminders")}).toArray(); }
    /// What else the program has signalled since the last time: objects of "member" and "arguments".
    QJsonArray takeSignals() { return ask(QStringLiteral("take_signals")).toArray(); }
    QStringList takeSignalNames();
    /// A call to the item or its menu, arguments as GVariant text: an object with "value" or "error".
    QJsonObject callItem(const QString &method, const QString &arguments);
    QJsonObject callMenu(const QString &method, const QString &arguments);

    /// The rows as libdbusmenu's client has them by now.
    QJsonArray rows() { return ask(QStringLiteral("menu")).toArray(); }
    QStringList labels();
    /// The id of the row with that label; -1 where there is none.
    int idOf(const QString &label);
    void click(int id) { ask(QStringLiteral("click"), {id}); }

private:
    QProcess m_process;
};
