// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Foundation/JsonReader.h"

#include <QJsonDocument>

using namespace Qt::StringLiterals;

QString describe(JsonError error)
{
    return error == JsonError::Missing ? u"The data couldn’t be read because it is missing."_s
                                       : u"The data couldn’t be read because it isn’t in the correct format."_s;
}

JsonReader::JsonReader(QJsonObject object, std::optional<JsonError> &error)
    : m_object(std::move(object)), m_error(error)
{
}

std::optional<QString> JsonReader::text(const QString &key)
{
    const std::optional<QJsonValue> value = present(key);
    if (!value || !expect(value->isString()))
        return {};
    return value->toString();
}

std::optional<std::int64_t> JsonReader::integer(const QString &key)
{
    const std::optional<QJsonValue> value = present(key);
    if (!value)
        return {};
    // toInteger gives its argument back for all that is no whole number of 64 bits; 190.0 is one.
    const qint64 number = value->toInteger(0);
    if (!expect(value->toInteger(1) == number))
        return {};
    return number;
}

QString JsonReader::requiredText(const QString &key)
{
    if (!present(key))
        fail(JsonError::Missing);
    return text(key).value_or(QString());
}

std::optional<QJsonValue> JsonReader::present(const QString &key) const
{
    const auto value = m_object.constFind(key);
    if (value == m_object.constEnd() || value->isNull())
        return {};
    return *value;
}

bool JsonReader::expect(bool rightType)
{
    if (!rightType)
        fail(JsonError::WrongFormat);
    return !m_error;
}

void JsonReader::fail(JsonError error)
{
    if (!m_error)
        m_error = error;
}

tl::expected<QJsonObject, JsonError> parseJsonObject(const QByteArray &body)
{
    const QJsonDocument document = QJsonDocument::fromJson(body);
    if (!document.isObject())
        return tl::unexpected(JsonError::WrongFormat);
    return document.object();
}
