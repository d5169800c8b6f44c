// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "TestDeployment.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

QString authorities;
QString origin = u"http://127.0.0.1:9"_s; // the discard port: refused
std::chrono::milliseconds timeout = 30s;

} // namespace

QString Deployment::graphBaseUrl() { return origin + u'/'; }

QString Deployment::updateFeedUrl() { return origin + u"/version.json"_s; }

QString Deployment::trustedAuthorities() { return authorities; }

QString Deployment::domain() { return u"Vantelo Test"_s; }

std::chrono::milliseconds Deployment::pollInterval() { return 10min; }

std::chrono::milliseconds Deployment::transferTimeout() { return timeout; }

void TestDeployment::setOrigin(const QString &newOrigin) { origin = newOrigin; }

void TestDeployment::setTrustedAuthorities(const QString &file) { authorities = file; }

void TestDeployment::setTransferTimeout(std::chrono::milliseconds newTimeout) { timeout = newTimeout; }
