// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "StatusHost.h"

#include <QEventLoop>
#include <QJsonDocument>
#include <QTest>

using namespace Qt::StringLiterals;

StatusHost::StatusHost()
{
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(QStringLiteral(VANTELO_TEST_SUPPORT "/status_host.py"), QStringList());
    if (!m_process.waitForStarted())
        qFatal("status_host.py does not start");
}

StatusHost::~StatusHost()
{
    m_process.closeWriteChannel();
    if (!m_process.waitForFinished())
        m_process.kill();
}

QJsonValue StatusHost::ask(const QString &call, const QJsonArray &with)
{
    const QJsonObject request{{u"call"_s, call}, {u"with"_s, with}};
    m_process.write(QJsonDocument(request).toJson(QJsonDocument::Compact) + '\n');
    const auto isDecided = [this] { return m_process.canReadLine() || m_process.state() == QProcess::NotRunning; };
    if (!QTest::qWaitFor(isDecided, 30'000) || !m_process.canReadLine()) {
        QTest::qFail(qPrintable(u"the host gives no answer to "_s + call), __FILE__, __LINE__);
        return QJsonValue::Undefined;
    }
    const QJsonObject answer = QJsonDocument::fromJson(m_process.readLine()).object();
    if (answer.contains(u"failure"_s))
        QTest::qFail(qPrintable(call + u": "_s + answer[u"failure"_s].toString()), __FILE__, __LINE__);
    return answer[u"value"_s];
}

QStringList StatusHost::takeSignalNames()
{
    QStringList names;
    for (const QJsonValue signal : takeSignals())
        names << signal[u"member"_s].toString();
    return names;
}

QJsonObject StatusHost::callItem(const QString &method, const QString &arguments)
{
    return ask(u"call_item"_s, {method, arguments}).toObject();
}

QJsonObject StatusHost::callMenu(const QString &method, const QString &arguments)
{
    return ask(u"call_menu"_s, {method, arguments}).toObject();
}

QStringList StatusHost::labels()
{
    QStringList labels;
    for (const QJsonValue row : rows())
        labels << row[u"label"_s].toString();
    return labels;
}

int StatusHost::idOf(const QString &label)
{
    for (const QJsonValue row : rows()) {
        if (row[u"label"_s] == label)
            return row[u"id"_s].toInt();
    }
    return -1;
}
