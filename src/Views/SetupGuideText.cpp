// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Views/SetupGuideText.h"

#include "Foundation/Deployment.h"

#include <QUrl>

using namespace Qt::StringLiterals;

namespace SetupGuideText {

namespace {

StepItem text(const QString &text) { return {.text = text, .address = {}}; }

StepItem link(const QString &label, const QString &address) { return {.text = label, .address = address}; }

/// A link that shows the name of its host.
StepItem hostLink(const QString &address) { return link(QUrl(address).host(), address); }

} // namespace

QString title() { return u"Getting Your Meta API Credentials"_s; }

QString subtitle() { return u"Follow these steps to connect Vantelo to your ad account."_s; }

Step createApp()
{
    return {.number = 1,
        .title = u"Create a Meta App"_s,
        .items = {
            text(u"Go to Meta for Developers"_s),
            hostLink(WebAddress::developerPortal.toString()),
            text(u"Click My Apps → Create App"_s),
            text(u"Select Other → Business type"_s),
            text(u"Name it anything (e.g., \"Ads Monitor\")"_s),
            text(u"In the app dashboard, click + Add Product → find Marketing API → Set Up"_s),
        }};
}

Step generateToken()
{
    return {.number = 2,
        .title = u"Generate an Access Token"_s,
        .items = {
            text(u"Go to the Graph API Explorer"_s),
            link(u"Graph API Explorer"_s, WebAddress::developerPortal.toString() + u"tools/explorer/"_s),
            text(u"Select your app from the dropdown"_s),
            text(u"Click Generate Access Token"_s),
            text(u"Grant the ads_read permission when prompted"_s),
            text(u"Copy the token"_s),
        }};
}

Box shortLivedToken()
{
    return {.title = u"⚠️ Short-Lived Token"_s,
        .message = u"This token expires in ~1 hour. Exchange it for a long-lived token (~60 days) using the curl "
                   u"command below, "
                   "or use a System User token from Business Manager for permanent access."_s};
}

Step longLivedToken()
{
    return {.number = 3,
        .title = u"Get a Long-Lived Token"_s,
        .items = {
            text(u"Run this command in Terminal (replace the placeholders):"_s),
        }};
}

QString exchangeCommand()
{
    return u"curl -X GET \"%1v21.0/oauth/access_token\\\n"
           "  ?grant_type=fb_exchange_token\\\n"
           "  &client_id=YOUR_APP_ID\\\n"
           "  &client_secret=YOUR_APP_SECRET\\\n"
           "  &fb_exchange_token=YOUR_SHORT_TOKEN\""_s.arg(WebAddress::graph);
}

QString appSecretNote()
{
    return u"You can find your App ID and App Secret under Settings → Basic in your Meta App dashboard."_s;
}

Step findAccountId()
{
    return {.number = 4,
        .title = u"Find Your Ad Account ID"_s,
        .items = {
            text(u"Open Ads Manager"_s),
            hostLink(WebAddress::adsManager.toString()),
            text(u"Look at the URL — it contains act=XXXXXXXXXX"_s),
            text(u"Your Ad Account ID is act_XXXXXXXXXX (or just the number)"_s),
        }};
}

QString pasteTitle() { return u"Step 5: Paste into Settings"_s; }

QString pasteText()
{
    return u"Open Vantelo Settings and paste your Access Token and Ad Account ID. "
           "Click \"Test Connection\" to verify everything works."_s;
}

Box permanentToken()
{
    return {.title = u"💡 Permanent Token"_s,
        .message =
            u"For a token that never expires, create a System User in Business Manager → Settings → System Users. "
            "Generate a token for the System User with ads_read permission."_s};
}

} // namespace SetupGuideText
