// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include "GraphService.h"

#include <QDateTime>
#include <QString>

/// The service's own error replies.
namespace GraphError {

ServedReply missingToken();
ServedReply malformedToken();
/// An access token that was good until the given time.
ServedReply expiredToken(const QDateTime &expiry, const QDateTime &now);
ServedReply unknownObject(const QString &id);
ServedReply unknownField(const QString &field);
ServedReply unknownPreset();
ServedReply unknownPath(const QString &path);
ServedReply tooManyCalls();

} // namespace GraphError
