// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "MenuBar/Linux/StatusItem/StatusNotifierRegistration.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QString watcherPath = u"/StatusNotifierWatcher"_s;
const QString watcherInterface = u"org.kde.StatusNotifierWatcher"_s;

/// Between registrations that were in vain; each pause is twice the one before.
constexpr std::chrono::milliseconds firstPause = 500ms;
constexpr std::chrono::milliseconds longestPause = 10min;

/// Between confirmations.
constexpr std::array<std::chrono::milliseconds, 4> confirmationPauses{100ms, 500ms, 2s, 10s};

/// A watcher that is slow to answer is busy, and would hear a repeated registration no sooner.
constexpr int anyTime = std::numeric_limits<int>::max();

} // namespace

StatusNotifierRegistration::StatusNotifierRegistration(QDBusConnection connection, QString watcher, QString itemPath)
    : m_connection(std::move(connection)),
      m_watcher(std::move(watcher)),
      m_itemPath(std::move(itemPath)),
      m_patience(firstPause),
      m_pausesToCome(confirmationPauses)
{
    m_untilNextLook.setSingleShot(true);
    connect(&m_untilNextLook, &QTimer::timeout, this, &StatusNotifierRegistration::look);
    // From anybody: to tell who the sender is, Qt would wait for the bus. A look more does no harm.
    m_connection.connect(
        QString(), watcherPath, watcherInterface, u"StatusNotifierItemRegistered"_s, this, SLOT(lookSooner()));
    registerItem();
}

void StatusNotifierRegistration::registerItem()
{
    QDBusMessage call =
        QDBusMessage::createMethodCall(m_watcher, watcherPath, watcherInterface, u"RegisterStatusNotifierItem"_s);
    call << m_itemPath;
    m_hadTime = false;
    ask(call, [this](const QDBusPendingCall &answer) {
        m_wasAccepted = !answer.isError();
        look();
    });
}

void StatusNotifierRegistration::look()
{
    QDBusMessage question =
        QDBusMessage::createMethodCall(m_watcher, watcherPath, u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
    question << watcherInterface << u"RegisteredStatusNotifierItems"_s;
    ask(question, [this](const QDBusPendingCall &answer) { proceed(isListedIn(answer)); });
}

// Watchers list an item as the path it registered, as its bus name, or as both, with or without "@" between them.
// One that keeps no list is believed at its word.
bool StatusNotifierRegistration::isListedIn(const QDBusPendingCall &answer) const
{
    const QDBusPendingReply<QDBusVariant> reply = answer;
    const QVariant items = reply.isValid() ? reply.value().variant() : QVariant();
    if (items.typeId() != QMetaType::QStringList)
        return m_wasAccepted;
    const QString name = m_connection.baseService();
    return std::ranges::any_of(items.toStringList(), [&](const QString &item) {
        return item == m_itemPath || item == name || item == name + m_itemPath || item == name + u'@' + m_itemPath;
    });
}

void StatusNotifierRegistration::proceed(bool isListed)
{
    m_isListed = m_isListed || isListed;
    if (m_isListed) {
        if (!m_pausesToCome.empty()) {
            m_untilNextLook.start(m_pausesToCome.front());
            m_pausesToCome = m_pausesToCome.subspan(1);
        }
        Q_EMIT confirmed();
    } else if (m_untilNextLook.isActive()) {
        return; // looked sooner, in vain
    } else if (m_hadTime) {
        registerItem();
    } else {
        m_hadTime = true;
        m_untilNextLook.start(m_patience);
        m_patience = std::min(2 * m_patience, longestPause);
    }
}

// A watcher tells of a new item, maybe of ours.
void StatusNotifierRegistration::lookSooner()
{
    if (!m_isListed && m_untilNextLook.isActive())
        look();
}

void StatusNotifierRegistration::ask(
    const QDBusMessage &question, const std::function<void(const QDBusPendingCall &)> &then)
{
    auto *const answer = new QDBusPendingCallWatcher(m_connection.asyncCall(question, anyTime), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [=] {
        answer->deleteLater();
        then(*answer);
    });
}
