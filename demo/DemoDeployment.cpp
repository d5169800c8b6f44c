// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "DemoWorld.h"
#include "Foundation/Deployment.h"

#include <cmath>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

QString origin() { return u"http://127.0.0.1:%1"_s.arg(DemoWorld::port); }

} // namespace

QString Deployment::graphBaseUrl() { return origin() + u'/'; }

QString Deployment::updateFeedUrl() { return origin() + u"/version.json"_s; }

QString Deployment::trustedAuthorities() { return {}; }

QString Deployment::domain() { return u"Vantelo Demo"_s; }

std::chrono::milliseconds Deployment::pollInterval()
{
    constexpr std::chrono::milliseconds tenMinutes = 10min;
    return std::chrono::milliseconds(std::llround(static_cast<double>(tenMinutes.count()) / DemoWorld::speed));
}

std::chrono::milliseconds Deployment::transferTimeout() { return 10s; }
