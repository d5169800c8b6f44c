// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Views/MenuBarView.h"

#include "API/FormatNumber.h"
#include "Foundation/Deployment.h"
#include "Foundation/PlainNumber.h"
#include "Foundation/Task.h"
#include "State/AppState.h"
#include "Views/WindowManager.h"

#include <QCoreApplication>
#include <QTextBoundaryFinder>

using namespace Qt::StringLiterals;

namespace {

QString dollars(double amount) { return u'$' + PlainNumber::withTwoDecimals(amount); }

double costPerResult(const SevenDayStats &stats)
{
    return stats.conversions < 1 ? 0.0 : stats.spend / static_cast<double>(stats.conversions);
}

/// Behind an Indic letter Qt takes the parts of what follows for characters of their own.
bool belongsTogether(QChar before, QChar after)
{
    constexpr QChar joiner(0x200D);
    if (before == u'\r')
        return after == u'\n';
    if (before.isHighSurrogate())
        return after.isLowSurrogate();
    return before.category() != QChar::Other_Control && (after.isMark() || after == joiner);
}

/// The first characters as a reader counts them: a family of joined emoji or a flag is one.
QString firstCharacters(const QString &text, int count)
{
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    qsizetype end = 0;
    for (int i = 0; i < count && end >= 0; ++i) {
        do
            end = finder.toNextBoundary();
        while (end > 0 && end < text.size() && belongsTogether(text.at(end - 1), text.at(end)));
    }
    return end < 0 ? text : text.first(end);
}

} // namespace

MenuBarView::MenuBarView(std::shared_ptr<AppState> appState) : m_appState(std::move(appState)) {}

MenuRows MenuBarView::body() const
{
    MenuRows rows =
        m_appState->status().match([this](const MonitorStatus::Error &error) { return errorRows(error.message); },
            [this](MonitorStatus::Ok) { return figureRows(); }, [this](MonitorStatus::Stale) { return figureRows(); },
            [this](MonitorStatus::NoConfig) { return setUpRows(); });
    rows.push_back(MenuRow::divider());
    // Not quit(): an open alert could refuse it.
    rows.push_back(MenuRow::button(u"Quit Vantelo"_s, [] { QCoreApplication::exit(0); }));
    return rows;
}

MenuRows MenuBarView::figureRows() const
{
    const TodayStats &today = m_appState->today();
    const SevenDayStats &week = m_appState->sevenDay();
    return {
        MenuRow::line(u"📊 Today"_s, MenuRow::Style::Headline),
        MenuRow::line(u"💰 Spend: "_s + dollars(today.spend)),
        MenuRow::line(u"🔗 Link Clicks: "_s + formatNumber(today.linkClicks)),
        MenuRow::line(u"💲 CPC: "_s + dollars(today.cpc)),
        MenuRow::divider(),
        MenuRow::line(u"📅 Last 7 Days"_s, MenuRow::Style::Headline),
        MenuRow::line(u"💰 Spend: "_s + dollars(week.spend)),
        MenuRow::line(u"👁️ Impressions: "_s + formatNumber(week.impressions)),
        MenuRow::line(u"🔁 Frequency: "_s + PlainNumber::withTwoDecimals(week.frequency)),
        MenuRow::line(u"👥 Reach: "_s + formatNumber(week.reach)),
        MenuRow::line(u"💲 CPC: "_s + dollars(week.cpc)),
        MenuRow::line(u"📈 CTR: "_s + PlainNumber::withTwoDecimals(week.ctr) + u'%'),
        MenuRow::line(u"🎯 Results: "_s + formatNumber(week.conversions)),
        MenuRow::line(u"💵 Cost/Result: "_s + dollars(costPerResult(week))),
        MenuRow::divider(),
        MenuRow::link(u"Open Ads Manager"_s, QUrl(WebAddress::adsManager.toString())),
        refreshButton(),
        MenuRow::divider(),
        settingsButton(u"Settings…"_s),
        MenuRow::button(u"Check for Updates…"_s, [state = m_appState] { state->manualCheckForUpdates(); }),
    };
}

MenuRows MenuBarView::setUpRows() const
{
    return {
        MenuRow::line(u"⚪ No credentials configured"_s),
        MenuRow::divider(),
        settingsButton(u"Open Settings…"_s),
        MenuRow::button(u"Setup Guide…"_s, [] { WindowManager::shared().openSetupGuide(); }),
    };
}

MenuRows MenuBarView::errorRows(const QString &message) const
{
    return {
        MenuRow::line(u"❌ API Error"_s),
        MenuRow::line(firstCharacters(message, 60), MenuRow::Style::Caption),
        MenuRow::divider(),
        refreshButton(),
        MenuRow::divider(),
        settingsButton(u"Open Settings…"_s),
    };
}

MenuRow MenuBarView::refreshButton() const
{
    return MenuRow::button(u"🔄 Refresh"_s, [state = m_appState] { Task::start(state->refresh()); });
}

MenuRow MenuBarView::settingsButton(const QString &title) const
{
    return MenuRow::button(title, [state = m_appState] { WindowManager::shared().openSettings(state); });
}
