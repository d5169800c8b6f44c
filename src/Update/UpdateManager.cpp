// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Update/UpdateManager.h"

#include "Controls/Windows/Alert.h"
#include "Foundation/Decoding.h"
#include "Foundation/Deployment.h"
#include "Foundation/JsonReader.h"
#include "Foundation/Log.h"
#include "Foundation/PlainNumber.h"
#include "Http/HttpSession.h"

#include <QCoreApplication>
#include <QDesktopServices>

#include <algorithm>
#include <cstdint>
#include <optional>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

std::vector<std::int64_t> components(const QString &version)
{
    std::vector<std::int64_t> numbers;
    const QStringList pieces = version.split(u'.', Qt::SkipEmptyParts);
    for (const QString &piece : pieces) {
        if (const auto number = PlainNumber::whole(piece))
            numbers.push_back(*number);
    }
    return numbers;
}

QString runningVersion()
{
    const QString version = QCoreApplication::applicationVersion();
    return version.isEmpty() ? u"0.0.0"_s : version;
}

/// The feed's address, if a browser is what opens it. Other openers would take a file, or an option to themselves.
std::optional<QUrl> webPage(const QString &address)
{
    const QUrl url(address, QUrl::StrictMode);
    const bool isWeb = url.scheme() == u"https"_s || url.scheme() == u"http"_s; // parsing puts it in lower case
    return url.isValid() && isWeb && !url.host().isEmpty() ? std::optional(url) : std::nullopt;
}

Alert updateAlert(const RemoteUpdate &update)
{
    return {
        .messageText = u"New Update Available"_s,
        .informativeText = u"Version "_s + update.version +
                           u" is now available. Would you like to download it now?\n\n"_s +
                           update.release_notes.value_or(QString()),
        .style = Alert::Style::Informational,
        .buttons = {u"Download Now"_s, u"Later"_s},
    };
}

Alert noUpdateAlert()
{
    return {
        .messageText = u"You're Up to Date"_s,
        .informativeText = u"You are currently running the latest version of Vantelo."_s,
        .style = Alert::Style::Informational,
        .buttons = {u"OK"_s},
    };
}

Alert errorAlert(const QString &description)
{
    return {
        .messageText = u"Update Check Failed"_s,
        .informativeText = u"Could not check for updates: "_s + description,
        .style = Alert::Style::Warning,
        .buttons = {u"OK"_s},
    };
}

QCoro::Task<tl::expected<RemoteUpdate, TransferError>> fetchUpdate(QUrl url)
{
    const auto body = co_await HttpSession::shared().data(url);
    if (!body)
        co_return tl::unexpected(body.error());
    const auto update = co_await decoded(*body, &decodeJson<RemoteUpdate>);
    if (!update)
        co_return tl::unexpected(TransferError{.description = describe(update.error())});
    co_return *update;
}

} // namespace

UpdateManager &UpdateManager::shared()
{
    static UpdateManager manager;
    return manager;
}

UpdateManager::UpdateManager() : m_updateURL(Deployment::updateFeedUrl(), QUrl::StrictMode)
{
    Q_ASSERT(m_updateURL.isValid());
}

QCoro::Task<> UpdateManager::checkForUpdates(bool silent) const
{
    const auto update = co_await fetchUpdate(m_updateURL);
    if (!update && update.error().cancelled)
        co_return;
    if (!update) {
        const QString description = update.error().description;
        logLine(u"Failed to check for updates - "_s + description);
        if (!silent)
            co_await showErrorAlert(description);
        co_return;
    }
    if (isVersionNewer(update->version, runningVersion()))
        co_await showUpdateAlert(*update);
    else if (!silent)
        co_await showNoUpdateAlert();
}

bool UpdateManager::isVersionNewer(const QString &remote, const QString &current)
{
    std::vector<std::int64_t> remoteNumbers = components(remote);
    std::vector<std::int64_t> currentNumbers = components(current);
    const std::size_t count = std::max(remoteNumbers.size(), currentNumbers.size());
    remoteNumbers.resize(count);
    currentNumbers.resize(count);
    return remoteNumbers > currentNumbers;
}

QCoro::Task<> UpdateManager::showUpdateAlert(RemoteUpdate update)
{
    const qsizetype pressed = co_await Alert::runModal(updateAlert(update));
    const std::optional<QUrl> page = webPage(update.download_url);
    if (pressed == 0 && page)
        QDesktopServices::openUrl(*page);
}

QCoro::Task<> UpdateManager::showNoUpdateAlert() { co_await Alert::runModal(noUpdateAlert()); }

QCoro::Task<> UpdateManager::showErrorAlert(QString description) { co_await Alert::runModal(errorAlert(description)); }
