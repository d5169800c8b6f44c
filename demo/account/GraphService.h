// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include "AccountStory.h"

#include <QByteArray>
#include <QUrl>

/// One reply of the demo account, without its transport.
struct ServedReply {
    int status = 200;
    QByteArray contentType = "application/json; charset=UTF-8";
    QByteArray challenge = {}; ///< of the WWW-Authenticate header; empty for none
    QByteArray body = {};
};

/// What the demo account knows when it is asked.
struct ServiceMoment {
    double minutes = 0.0;    ///< the story's time
    int callsInLastHour = 0; ///< this one included
};

/// The service's insights edge for one account, in the service's own shapes: every figure is text, a figure
/// without a value is absent, and a row holds what was asked for and its dates.
class GraphService {
public:
    /// More calls than this in one hour are refused. The program's own polls make twelve.
    static constexpr int callsPerHour = 60;

    explicit GraphService(AccountStory story) : m_story(story) {}

    /// Whether the address is one of the service's, and so counts as a call.
    static bool serves(const QUrl &url);

    ServedReply answer(const QUrl &url, ServiceMoment moment) const;

private:
    AccountStory m_story;
};
