// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "GraphService.h"

#include "GraphError.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QUrlQuery>

#include <optional>

using namespace Qt::StringLiterals;

namespace {

/// Nothing asked for, so absent; an empty text would not be.
using Field = QJsonValue;

Field count(std::int64_t number) { return number == 0 ? Field() : Field(QString::number(number)); }

Field ratio(double dividend, std::int64_t divisor, double factor = 1.0)
{
    return divisor == 0 ? Field() : Field(QString::number(dividend / static_cast<double>(divisor) * factor, 'f', 6));
}

void addAction(QJsonArray &actions, const QString &type, std::int64_t number)
{
    if (number == 0)
        return;
    const QString text = QString::number(number);
    actions.append(QJsonObject{{u"action_type"_s, type}, {u"value"_s, text}, {u"1d_click"_s, text},
        {u"7d_click"_s, text}, {u"28d_click"_s, text}});
}

Field actions(const Delivery &delivery)
{
    QJsonArray list;
    addAction(list, u"link_click"_s, delivery.linkClicks);
    addAction(list, u"page_engagement"_s, delivery.linkClicks * 2);
    addAction(list, u"lead"_s, delivery.leads);
    addAction(list, u"purchase"_s, delivery.purchases);
    return list.isEmpty() ? Field() : Field(list);
}

/// Undefined for a field that insights do not have, null for one that has no value.
Field field(const QString &name, const Delivery &delivery)
{
    if (name == u"impressions"_s)
        return count(delivery.impressions);
    if (name == u"reach"_s)
        return count(delivery.reach);
    if (name == u"inline_link_clicks"_s)
        return count(delivery.linkClicks);
    if (name == u"spend"_s)
        return QString::number(delivery.spend, 'g', 12);
    if (name == u"cost_per_inline_link_click"_s)
        return ratio(delivery.spend, delivery.linkClicks);
    if (name == u"frequency"_s)
        return ratio(static_cast<double>(delivery.impressions), delivery.reach);
    if (name == u"inline_link_click_ctr"_s)
        return ratio(static_cast<double>(delivery.linkClicks), delivery.impressions, 100.0);
    return name == u"actions"_s ? actions(delivery) : Field(QJsonValue::Undefined);
}

ServedReply page(const QJsonArray &rows)
{
    QJsonObject response{{u"data"_s, rows}};
    if (!rows.isEmpty())
        response.insert(u"paging"_s,
            QJsonObject{{u"cursors"_s, QJsonObject{{u"before"_s, u"MAZDZD"_s}, {u"after"_s, u"MAZDZD"_s}}}});
    return {.body = QJsonDocument(response).toJson(QJsonDocument::Compact)};
}

ServedReply insights(const QStringList &fields, const Delivery &delivery, QDate start, QDate stop)
{
    QJsonObject row{
        {u"date_start"_s, start.toString(Qt::ISODate)},
        {u"date_stop"_s, stop.toString(Qt::ISODate)},
    };
    for (const QString &name : fields) {
        const Field value = field(name, delivery);
        if (value.isUndefined())
            return GraphError::unknownField(name);
        if (!value.isNull())
            row.insert(name, value);
    }
    return page(delivery.impressions == 0 ? QJsonArray() : QJsonArray{row});
}

/// What stands between the version and the edge; nothing where the address is none of the edge's.
std::optional<QString> objectId(const QUrl &url)
{
    static const QRegularExpression edge(u"^/v21\\.0/([^/]+)/insights$"_s);
    const QRegularExpressionMatch match = edge.match(url.path());
    return match.hasMatch() ? std::optional(match.captured(1)) : std::nullopt;
}

QDateTime lastExpiry(const AccountStory &story, double minutes)
{
    return story.time(std::floor(minutes / AccountStory::period) * AccountStory::period + AccountStory::startOfExpiry);
}

} // namespace

bool GraphService::serves(const QUrl &url) { return url.path().startsWith(u"/v21.0/"_s); }

ServedReply GraphService::answer(const QUrl &url, ServiceMoment moment) const
{
    const std::optional<QString> id = objectId(url);
    if (!id)
        return GraphError::unknownPath(url.path());
    const QUrlQuery query(url);
    const QString token = query.queryItemValue(u"access_token"_s);
    if (token.isEmpty())
        return GraphError::missingToken();
    if (token != QStringLiteral(DEMO_ACCESS_TOKEN))
        return GraphError::malformedToken();
    const QDateTime now = m_story.time(moment.minutes);
    if (AccountStory::phase(moment.minutes) == AccountStory::Phase::TokenExpired)
        return GraphError::expiredToken(lastExpiry(m_story, moment.minutes), now);
    if (moment.callsInLastHour > callsPerHour)
        return GraphError::tooManyCalls();
    if (*id != QStringLiteral(DEMO_ACCOUNT_ID))
        return GraphError::unknownObject(*id);

    const QStringList fields = query.queryItemValue(u"fields"_s).split(u',', Qt::SkipEmptyParts);
    const QString preset = query.queryItemValue(u"date_preset"_s);
    if (preset == u"today"_s)
        return insights(fields, m_story.today(moment.minutes), now.date(), now.date());
    if (preset == u"last_7d"_s)
        return insights(fields, m_story.lastSevenDays(moment.minutes), now.date().addDays(-7), now.date().addDays(-1));
    return GraphError::unknownPreset();
}
