// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "TestPreferences.h"

#include "Foundation/Deployment.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>

using namespace Qt::StringLiterals;

TestPreferences::TestPreferences() { qputenv("XDG_CONFIG_HOME", QFile::encodeName(m_directory.path())); }

TestPreferences::~TestPreferences() = default;

QString TestPreferences::fileName() const
{
    return m_directory.path() + u"/Vantelo/"_s + Deployment::domain() + u".conf"_s;
}

QString TestPreferences::newNameForTheFile() const
{
    const QString link = m_directory.filePath(u"outside "_s + QString::number(++m_names));
    QFile::link(u"."_s, link);
    return link + u"/Vantelo/"_s + Deployment::domain() + u".conf"_s;
}

void TestPreferences::write(const QString &key, const QVariant &value) const
{
    QSettings settings(newNameForTheFile(), QSettings::IniFormat);
    settings.setValue(key, value);
    settings.sync();
}

QVariant TestPreferences::stored(const QString &key) const
{
    return QSettings(newNameForTheFile(), QSettings::IniFormat).value(key);
}

void TestPreferences::writeFile(const QByteArray &content) const
{
    QDir().mkpath(QFileInfo(fileName()).path());
    QFile file(fileName());
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(fileName()));
}
