// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "TestSessionBus.h"

#include "Helpers.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace {

const QString configuration = uR"(<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-BUS Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:tmpdir=/tmp</listen>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <%1 own="*"/>
  </policy>
</busconfig>
)"_s;

} // namespace

TestSessionBus::TestSessionBus(Names names)
{
    requirePrograms({u"dbus-daemon"_s});
    const QByteArray text = configuration.arg(names == Names::Free ? u"allow"_s : u"deny"_s).toUtf8();
    QFile file(m_directory.filePath(u"session.conf"_s));
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        qFatal("cannot write the bus's configuration");
    file.close();
    m_daemon.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_daemon.start(u"dbus-daemon"_s, {u"--config-file="_s + file.fileName(), u"--nofork"_s, u"--print-address"_s});
    if (!m_daemon.waitForReadyRead(10'000))
        qFatal("dbus-daemon does not start");
    qputenv("DBUS_SESSION_BUS_ADDRESS", m_daemon.readLine().trimmed());
}

TestSessionBus::~TestSessionBus()
{
    m_daemon.terminate();
    m_daemon.waitForFinished();
}
