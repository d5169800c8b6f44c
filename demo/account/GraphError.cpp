// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "GraphError.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QLocale>

using namespace Qt::StringLiterals;

namespace {

struct Error {
    QString message;
    int code = 0;
    int subcode = 0; ///< 0 for none
    QString type = u"OAuthException"_s;
    QByteArray reason = "invalid_request";
    bool isTransient = false;
};

ServedReply reply(const Error &error)
{
    QJsonObject object{{u"message"_s, error.message}, {u"type"_s, error.type}, {u"code"_s, error.code},
        {u"fbtrace_id"_s, u"ADemoAccountHasNoTraces"_s}};
    if (error.subcode != 0)
        object.insert(u"error_subcode"_s, error.subcode);
    if (error.isTransient)
        object.insert(u"is_transient"_s, true);
    return {
        .status = 400,
        .challenge = "OAuth \"Facebook Platform\" \"" + error.reason + "\" \"" + error.message.toLatin1() + '"',
        .body = QJsonDocument(QJsonObject{{u"error"_s, object}}).toJson(QJsonDocument::Compact),
    };
}

QString spoken(const QDateTime &time) { return QLocale::c().toString(time, u"dddd, dd-MMM-yy HH:mm:ss"_s) + u" GMT"_s; }

} // namespace

ServedReply GraphError::missingToken()
{
    return reply({.message = u"An access token is required to request this resource."_s, .code = 104});
}

ServedReply GraphError::malformedToken()
{
    return reply({.message = u"Invalid OAuth access token - Cannot parse access token"_s,
        .code = 190,
        .reason = "invalid_token"});
}

ServedReply GraphError::expiredToken(const QDateTime &expiry, const QDateTime &now)
{
    return reply({.message = u"Error validating access token: Session has expired on %1. The current time is %2."_s.arg(
                      spoken(expiry), spoken(now)),
        .code = 190,
        .subcode = 463,
        .reason = "invalid_token"});
}

ServedReply GraphError::unknownObject(const QString &id)
{
    return reply({.message = u"Unsupported get request. Object with ID '%1' does not exist, cannot be loaded due to "
                             "missing permissions, or does not support this operation"_s.arg(id),
        .code = 100,
        .subcode = 33,
        .type = u"GraphMethodException"_s});
}

ServedReply GraphError::unknownField(const QString &field)
{
    return reply({.message = u"(#100) %1 is not valid for fields param."_s.arg(field), .code = 100});
}

ServedReply GraphError::unknownPreset()
{
    return reply({.message = u"(#100) date_preset must be one of the following values: today, last_7d"_s, .code = 100});
}

ServedReply GraphError::unknownPath(const QString &path)
{
    return reply({.message = u"Unknown path components: %1"_s.arg(path), .code = 2500});
}

ServedReply GraphError::tooManyCalls()
{
    return reply({.message = u"(#17) User request limit reached"_s, .code = 17, .isTransient = true});
}
