// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "API/MetaAPI.h"

#include "API/Figures.h"
#include "API/InsightsResponse.h"
#include "Foundation/Decoding.h"
#include "Foundation/Deployment.h"
#include "Foundation/JsonReader.h"
#include "Http/HttpSession.h"

using namespace Qt::StringLiterals;

namespace {

template <class Stats>
using Result = tl::expected<Stats, MetaAPIError>;

template <class Stats>
using FiguresOfRow = Stats (*)(const InsightRow &);

/// The service quotes a token that it cannot read, and messages go where others look: menus, buses, screens.
QString withoutToken(QString message, const QString &token)
{
    constexpr qsizetype shortest = 20; // what is shorter is no token and may be an ordinary word
    return token.size() < shortest ? message : message.replace(token, u"…"_s);
}

/// The HTTP status is no argument on purpose: what a body means is decided by what it decodes to.
template <class Stats>
Result<Stats> statsFromBody(const QByteArray &body, FiguresOfRow<Stats> figures, const QString &token)
{
    const auto response = decodeJson<InsightsResponse>(body);
    if (!response)
        return tl::unexpected(MetaAPIError::networkError(describe(response.error())));
    if (response->error) {
        const QString message = response->error->message.value_or(u"Unknown API error"_s);
        return tl::unexpected(MetaAPIError::apiError(withoutToken(message, token)));
    }
    if (!response->data || response->data->empty())
        return Stats();
    return figures(response->data->front());
}

template <class Stats>
QCoro::Task<Result<Stats>> fetch(QString address, FiguresOfRow<Stats> figures, QString token)
{
    // Qt's tolerant mode rejects nothing, so a token with a blank in it would never be told to the user.
    const QUrl url(address, QUrl::StrictMode);
    if (!url.isValid())
        co_return tl::unexpected(MetaAPIError::invalidURL());
    const auto body = co_await HttpSession::shared().data(url);
    if (!body)
        co_return tl::unexpected(MetaAPIError::networkError(body.error().description));
    const auto decode = [figures, token](const QByteArray &bytes) { return statsFromBody(bytes, figures, token); };
    co_return co_await decoded(*body, decode);
}

} // namespace

QCoro::Task<tl::expected<TodayStats, MetaAPIError>> MetaAPI::fetchTodayInsights(
    const QString &token, const QString &accountId) const
{
    return fetch(insightsAddress(accountId,
                     u"impressions,spend,inline_link_clicks,cost_per_inline_link_click"
                     "&date_preset=today&access_token="_s,
                     token),
        &Figures::today, token);
}

QCoro::Task<tl::expected<SevenDayStats, MetaAPIError>> MetaAPI::fetch7DayInsights(
    const QString &token, const QString &accountId) const
{
    return fetch(insightsAddress(accountId,
                     u"spend,impressions,frequency,reach,cost_per_inline_link_click,inline_link_click_ctr,actions"
                     "&date_preset=last_7d&access_token="_s,
                     token),
        &Figures::sevenDay, token);
}

QString MetaAPI::insightsAddress(const QString &accountId, const QString &query, const QString &token) const
{
    return Deployment::graphBaseUrl() + apiVersion + u'/' + accountId + u"/insights?fields="_s + query + token;
}
