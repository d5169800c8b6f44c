// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Process/Linux/ApplicationService.h"

#include "Process/Linux/ActivationToken.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// Bus names allow ASCII letters and digits, but no digit at an element's start; the rest is spelt in hex.
QString nameElement(const QString &word)
{
    QString element;
    for (const char byte : word.toUtf8()) {
        const bool letter = (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
        const bool digit = byte >= '0' && byte <= '9';
        if (letter || (digit && !element.isEmpty()))
            element += QLatin1Char(byte);
        else
            element += u"_%1"_s.arg(static_cast<uchar>(byte), 2, 16, QLatin1Char('0'));
    }
    return element;
}

} // namespace

QString applicationBusName(const QString &domain)
{
    QString name = u"app.vantelo"_s;
    for (const QString &word : domain.split(u' ', Qt::SkipEmptyParts))
        name += u'.' + nameElement(word);
    return name;
}

QString applicationObjectPath(const QString &busName) { return u'/' + QString(busName).replace(u'.', u'/'); }

ApplicationService::ApplicationService() { new ApplicationServiceAdaptor(*this); }

void ApplicationService::onActivation(std::function<void()> activate)
{
    m_activate = std::move(activate);
    if (std::exchange(m_missed, false))
        m_activate();
}

void ApplicationService::activateLater(const QVariantMap &platformData)
{
    const QString token = platformData.value(u"activation-token"_s).toString();
    const auto bringForward = [this, token] {
        useActivationToken(token);
        activate();
    };
    QMetaObject::invokeMethod(this, bringForward, Qt::QueuedConnection);
}

void ApplicationService::activate()
{
    if (m_activate)
        m_activate();
    else
        m_missed = true;
}

ApplicationServiceAdaptor::ApplicationServiceAdaptor(ApplicationService &service)
    : QDBusAbstractAdaptor(&service), m_service(service)
{
}

void ApplicationServiceAdaptor::Activate(const QVariantMap &platform_data) { m_service.activateLater(platform_data); }

void ApplicationServiceAdaptor::Open(const QStringList &, const QVariantMap &platform_data)
{
    m_service.activateLater(platform_data);
}

void ApplicationServiceAdaptor::ActivateAction(const QString &, const QVariantList &, const QVariantMap &platform_data)
{
    m_service.activateLater(platform_data);
}
