// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "TestDisplay.h"

using namespace Qt::StringLiterals;

TestDisplay::TestDisplay()
{
    m_server.start(
        u"Xvfb"_s, {u"-displayfd"_s, u"1"_s, u"-screen"_s, u"0"_s, u"800x600x24"_s, u"-nolisten"_s, u"tcp"_s});
    if (!m_server.waitForReadyRead(20'000))
        qFatal("Xvfb does not start");
    qputenv("DISPLAY", ':' + m_server.readLine().trimmed());
    qputenv("QT_QPA_PLATFORM", "xcb");
    if (!qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS")) // or the bus's library starts one for this display
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/dev/null");
}

TestDisplay::~TestDisplay()
{
    m_server.terminate();
    m_server.waitForFinished();
}
