// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <chrono>

/// What one build of the program is wired to. Chosen at link time: the product links Deployment.cpp, the demo
/// and the tests link definitions of their own that stay on loopback.
namespace Deployment {

/// Base of every insights request; ends in "/".
QString graphBaseUrl();

/// Address of the update feed.
QString updateFeedUrl();

/// File with the certificate authorities that a server's certificate must lead to; empty for the system's own.
QString trustedAuthorities();

/// Name of the preference domain, which also tells the instances of two builds apart.
QString domain();

/// Time between two polls.
std::chrono::milliseconds pollInterval();

/// A transfer that makes no progress for this long has timed out.
std::chrono::milliseconds transferTimeout();

} // namespace Deployment

/// The service's public addresses, as the user sees them: the same in every build.
namespace WebAddress {

inline constexpr QStringView graph = u"https://graph.facebook.com/";
inline constexpr QStringView developerPortal = u"https://developers.facebook.com/";
inline constexpr QStringView adsManager = u"https://adsmanager.facebook.com/";

} // namespace WebAddress
