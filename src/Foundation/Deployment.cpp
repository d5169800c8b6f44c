// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Foundation/Deployment.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

QString Deployment::graphBaseUrl() { return WebAddress::graph.toString(); }

QString Deployment::updateFeedUrl() { return QStringLiteral(VANTELO_WEBSITE "/version.json"); }

QString Deployment::trustedAuthorities() { return {}; }

QString Deployment::domain() { return u"Vantelo"_s; }

std::chrono::milliseconds Deployment::pollInterval() { return 10min; }

std::chrono::milliseconds Deployment::transferTimeout() { return 60s; }
