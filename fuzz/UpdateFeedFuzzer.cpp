// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

// Any feed gives either a record that encodes to an equal feed, or a reason; versions are ordered.

#include "Input.h"
#include "JsonShape.h"
#include "NumberOracle.h"
#include "Require.h"
#include "Update/RemoteUpdate.h"
#include "Update/UpdateManager.h"

using namespace Qt::StringLiterals;

namespace {

const JsonShape &shape()
{
    static const JsonShape feed{{"version"_L1, JsonField::Kind::RequiredText},
        {"download_url"_L1, JsonField::Kind::RequiredText}, {"release_notes"_L1}};
    return feed;
}

std::vector<std::int64_t> numbersIn(const QString &version)
{
    std::vector<std::int64_t> numbers;
    QString piece;
    for (const QChar character : version + u'.') {
        if (character != u'.') {
            piece += character;
            continue;
        }
        if (const auto number = NumberOracle::whole(piece))
            numbers.push_back(*number);
        piece.clear();
    }
    return numbers;
}

/// Less than 0, 0 or more, as the first version is older, as new or newer.
int compared(const QString &a, const QString &b)
{
    const std::vector<std::int64_t> first = numbersIn(a);
    const std::vector<std::int64_t> second = numbersIn(b);
    for (std::size_t i = 0; i < std::max(first.size(), second.size()); ++i) {
        const std::int64_t left = i < first.size() ? first[i] : 0;
        const std::int64_t right = i < second.size() ? second[i] : 0;
        if (left != right)
            return left < right ? -1 : 1;
    }
    return 0;
}

void checkVersions(const QString &a, const QString &b)
{
    const int order = compared(a, b);
    require(UpdateManager::isVersionNewer(a, b) == (order > 0), "the newer of two versions is newer");
    require(UpdateManager::isVersionNewer(b, a) == (order < 0), "and the older is not");
    require(!UpdateManager::isVersionNewer(a, a), "no version is newer than itself");
}

void checkRecord(const RemoteUpdate &update)
{
    const auto again = decodeJson<RemoteUpdate>(update.toJson());
    require(again.has_value(), "what was read encodes to a feed");
    require(again->version == update.version && again->download_url == update.download_url &&
                again->release_notes == update.release_notes,
        "that says the same");
    checkVersions(update.version, update.release_notes.value_or(u"1.0.0"_s));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray body = Input(data, size).rest();
    const auto update = decodeJson<RemoteUpdate>(body);
    const auto expected = misfit(body, shape());
    require(update.has_value() == !expected, "a feed is accepted when, and only when, it fits");
    if (update) {
        checkRecord(*update);
        return 0;
    }
    require(update.error() == expected && !describe(update.error()).isEmpty(), "the first misfit is reported");
    const QList<QByteArray> lines = body.split('\n');
    checkVersions(QString::fromUtf8(lines.first()), QString::fromUtf8(lines.last()));
    return 0;
}
