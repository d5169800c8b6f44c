// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QJsonArray>
#include <QJsonObject>
#include <QString>

#include <tl/expected.hpp>

#include <cstdint>
#include <optional>
#include <vector>

/// Why a body did not decode.
enum class JsonError {
    WrongFormat, ///< not JSON, not an object, or a value of another type than asked for
    Missing,     ///< a required value is absent or null
};

/// The sentence shown to the user.
QString describe(JsonError error);

/// Reads the members of one JSON object, strict about types and lenient about absence: a key that is missing
/// or null reads as absent, a value of another type is an error, and keys nobody asks for mean nothing. The
/// first error is kept and makes the whole decode fail; later reads then give absent values.
class JsonReader {
public:
    JsonReader(QJsonObject object, std::optional<JsonError> &error);

    std::optional<QString> text(const QString &key);
    std::optional<std::int64_t> integer(const QString &key);

    /// A text that has to be there; empty after an error.
    QString requiredText(const QString &key);

    /// A nested object, read by `Record::read(JsonReader &)`.
    template <class Record>
    std::optional<Record> record(const QString &key)
    {
        const std::optional<QJsonValue> value = present(key);
        return value ? readRecord<Record>(*value) : std::nullopt;
    }

    /// A list of nested objects. A null in it is an error.
    template <class Record>
    std::optional<std::vector<Record>> list(const QString &key)
    {
        const std::optional<QJsonValue> value = present(key);
        if (!value || !expect(value->isArray()))
            return {};
        const QJsonArray elements = value->toArray();
        std::vector<Record> records;
        records.reserve(static_cast<std::size_t>(elements.size())); // there may be millions
        for (const auto &element : elements) {
            std::optional<Record> record = element.isNull() ? missing<Record>() : readRecord<Record>(element);
            if (!record)
                return {};
            records.push_back(std::move(*record));
        }
        return records;
    }

private:
    std::optional<QJsonValue> present(const QString &key) const;
    bool expect(bool rightType);
    void fail(JsonError error);

    template <class Record>
    std::optional<Record> missing()
    {
        fail(JsonError::Missing);
        return {};
    }

    template <class Record>
    std::optional<Record> readRecord(const QJsonValue &value)
    {
        if (!expect(value.isObject()))
            return {};
        JsonReader reader(value.toObject(), m_error);
        Record record = Record::read(reader);
        return m_error ? std::nullopt : std::optional(std::move(record));
    }

    QJsonObject m_object;
    std::optional<JsonError> &m_error;
};

/// The top-level object of a body; anything else is not in the correct format.
tl::expected<QJsonObject, JsonError> parseJsonObject(const QByteArray &body);

/// Decodes a whole body as one record. May run on any thread.
template <class Record>
tl::expected<Record, JsonError> decodeJson(const QByteArray &body)
{
    const auto object = parseJsonObject(body);
    if (!object)
        return tl::unexpected(object.error());
    std::optional<JsonError> error;
    JsonReader reader(*object, error);
    Record record = Record::read(reader);
    if (error)
        return tl::unexpected(*error);
    return record;
}
