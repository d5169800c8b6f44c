// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <curl/curl.h>

/// What the user is told of a failed transfer: short sentences that never hold an address.
namespace FailureText {

/// For what libcurl gave up. The transfer is asked for the circumstances, so it must be there still.
QString describe(CURL *transfer, CURLcode code, bool throughProxy);

/// For what the session itself ends a transfer.
QString timedOut();
QString tooLarge();
QString redirectedAstray();
QString unreadable();

} // namespace FailureText
