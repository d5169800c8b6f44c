// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include "GraphService.h"

/// The product's web site as the demo serves it: the update feed and a download page.
namespace ProductSite {

/// At this minute of the story the feed begins to offer a newer release than the one that runs.
inline constexpr int releaseMinute = 60;

/// `origin` is the address of the demo's server, without a slash at its end.
ServedReply answer(const QUrl &url, const QString &origin, double minutes);

} // namespace ProductSite
