// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Look/Linux/DesktopColours.h"

#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QProcess>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

const QString portal = u"org.freedesktop.portal.Desktop"_s;
const QString portalPath = u"/org/freedesktop/portal/desktop"_s;
const QString portalSettings = u"org.freedesktop.portal.Settings"_s;
const QString appearance = u"org.freedesktop.appearance"_s;
const QString colourScheme = u"color-scheme"_s;
const QString gnomeInterface = u"org.gnome.desktop.interface"_s;
constexpr uint prefersDark = 1;

/// The portal's old call wraps its value twice.
uint unwrapped(QVariant value)
{
    while (value.canConvert<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value.toUInt();
}

} // namespace

DesktopColours::DesktopColours(QObject *parent) : QObject(parent)
{
    // From whichever sender: to name one, Qt would ask the bus for its owner and wait.
    QDBusConnection::sessionBus().connect(
        QString(), portalPath, portalSettings, u"SettingChanged"_s, this, SLOT(onPortalSettingChanged(QDBusMessage)));
    askPortal();
}

void DesktopColours::askPortal()
{
    // Read and not its successor ReadOne, which the portal of Debian 12 does not have.
    QDBusMessage read = QDBusMessage::createMethodCall(portal, portalPath, portalSettings, u"Read"_s);
    read << appearance << colourScheme;
    auto *const answer = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(read), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        answer->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *answer;
        if (m_portalTells) // a change has come in between
            return;
        m_portalTells = reply.isValid();
        if (m_portalTells)
            m_prefer(unwrapped(reply.value().variant()) == prefersDark);
        else if (qgetenv("XDG_CURRENT_DESKTOP").split(':').contains("GNOME"))
            followGnome();
    });
}

void DesktopColours::followGnome()
{
    // The service that stores settings tells on the bus when to ask again.
    QDBusConnection::sessionBus().connect(QString(), u"/ca/desrt/dconf/Writer/user"_s, u"ca.desrt.dconf.Writer"_s,
        u"Notify"_s, this, SLOT(onGnomeSettingsChanged(QString, QStringList)));
    askGnome();
}

/// By the desktop's own tool, which ends at once: its library is a dependency that only this would need.
void DesktopColours::askGnome()
{
    auto *const gsettings = new QProcess(this);
    connect(gsettings, &QProcess::errorOccurred, gsettings, &QObject::deleteLater);
    connect(gsettings, &QProcess::finished, this, [this, gsettings](int code) {
        gsettings->deleteLater();
        if (code == 0 && !m_portalTells)
            m_prefer(gsettings->readAllStandardOutput().contains("prefer-dark"));
    });
    gsettings->setStandardErrorFile(QProcess::nullDevice());
    gsettings->start(u"gsettings"_s, {u"get"_s, gnomeInterface, colourScheme});
}

// Takes the message as it is: Qt 6.4 does not deliver to a slot with a QDBusVariant before something else has used the
// type.
void DesktopColours::onPortalSettingChanged(const QDBusMessage &changed)
{
    const QVariantList told = changed.arguments();
    if (told.size() != 3 || told[0] != appearance || told[1] != colourScheme)
        return;
    m_portalTells = true;
    m_prefer(unwrapped(told[2]) == prefersDark);
}

void DesktopColours::onGnomeSettingsChanged(const QString &prefix, const QStringList &keys)
{
    // A change of one setting has its whole path as the prefix; one of several has a common beginning.
    const QString changed = u"/org/gnome/desktop/interface/color-scheme"_s;
    const bool told = keys.isEmpty() ||
                      std::ranges::any_of(keys, [&](const QString &key) { return changed.startsWith(prefix + key); });
    if (changed.startsWith(prefix) && told && !m_portalTells)
        askGnome();
}
