// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>

/// The system's own answer to which proxy a server is reached through.
namespace SystemProxy {

/// The proxy's address, such as "http://proxy.example:3128"; empty where there is none to go through. A script on a
/// far server may decide, so this takes as long as that does, and is to be called on a thread of its own. The server
/// is given as scheme, host and port alone.
QByteArray forServer(const QByteArray &server);

} // namespace SystemProxy
