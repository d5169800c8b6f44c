// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "TestPreferences.h"

#include "Foundation/Deployment.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>

using namespace Qt::StringLiterals;

TestPreferences::TestPreferences()
{
    // The second is also that of formats of the program's own.
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_directory.path());
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_directory.path());
    QFile::link(u"."_s, m_directory.filePath(u"outside"_s));
}

TestPreferences::~TestPreferences() = default;

QString TestPreferences::fileName() const
{
    return m_directory.path() + u"/Vantelo/"_s + Deployment::domain() + u".conf"_s;
}

QString TestPreferences::outsideFileName() const
{
    return m_directory.path() + u"/outside/Vantelo/"_s + Deployment::domain() + u".conf"_s;
}

void TestPreferences::write(const QString &key, const QVariant &value) const
{
    QSettings settings(outsideFileName(), QSettings::IniFormat);
    settings.setValue(key, value);
    settings.sync();
}

QVariant TestPreferences::stored(const QString &key) const
{
    return QSettings(outsideFileName(), QSettings::IniFormat).value(key);
}

void TestPreferences::writeFile(const QByteArray &content) const
{
    QDir().mkpath(QFileInfo(fileName()).path());
    QFile file(fileName());
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(fileName()));
}
