// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "BenchmarkAccount.h"

#include "LoopbackService.h"
#include "State/AppState.h"
#include "TestPreferences.h"

#include <QCoreApplication>
#include <QDeadlineTimer>

using namespace Qt::StringLiterals;

namespace {

struct Account {
    TestPreferences preferences;
    LoopbackService service;
    std::shared_ptr<AppState> state;
};

std::unique_ptr<Account> account;

LoopbackService::Reply replyTo(const LoopbackService::Request &request)
{
    if (request.target.contains("date_preset=today"))
        return LoopbackService::Reply::whole(R"({"data": [{"impressions": "12345", "spend": "67.89"}]})");
    if (request.target.contains("date_preset=last_7d"))
        return LoopbackService::Reply::whole(R"({"data": [{"impressions": "87654", "reach": "43210"}]})");
    return LoopbackService::Reply::whole(
        R"({"version": "0", "download_url": "http://127.0.0.1/", "release_notes": ""})");
}

/// Whether the figures are there and the update check, which follows them, is at least under way.
bool isSettled()
{
    return account->state->sevenDay().impressions > 0 && account->service.requestsWith("version.json") > 0;
}

} // namespace

bool BenchmarkAccount::open()
{
    account = std::make_unique<Account>();
    account->preferences.write(u"accessToken"_s, u"EAbenchmark"_s);
    account->preferences.write(u"adAccountId"_s, u"act_123456789"_s);
    account->service.answer(replyTo);
    account->state = AppState::create();
    const QDeadlineTimer deadline(10'000);
    while (!isSettled() && !deadline.hasExpired())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return isSettled();
}

const std::shared_ptr<AppState> &BenchmarkAccount::state() { return account->state; }

void BenchmarkAccount::close() { account.reset(); }
