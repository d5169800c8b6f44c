// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/Deployment.h"

/// The wiring of every test program: nothing listens until a test says where. Polls
/// come every ten minutes of TestMachine's time.
namespace TestDeployment {

/// Where requests and the feed go from now on, such as "http://127.0.0.1:4711".
void setOrigin(const QString &origin);
void setTrustedAuthorities(const QString &file);
void setTransferTimeout(std::chrono::milliseconds timeout);

} // namespace TestDeployment
