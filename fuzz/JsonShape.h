// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Foundation/JsonReader.h"

#include <QJsonObject>
#include <QLatin1StringView>

#include <optional>
#include <vector>

/// The rule of JsonReader once more, as a table: what each key may hold.
struct JsonField {
    enum class Kind { Text, RequiredText, Integer, Record, List };

    QLatin1StringView key;
    Kind kind = Kind::Text;
    std::vector<JsonField> fields = {}; ///< of a record, or of each element of a list
};

using JsonShape = std::vector<JsonField>;

/// The first thing in a body that does not fit; nothing where all does.
std::optional<JsonError> misfit(const QByteArray &body, const JsonShape &shape);
