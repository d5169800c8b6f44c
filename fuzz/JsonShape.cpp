// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "JsonShape.h"

#include <QJsonDocument>

namespace {

std::optional<JsonError> misfitOfObject(const QJsonObject &object, const JsonShape &shape);

bool isInteger(const QJsonValue &value)
{
    if (!value.isDouble())
        return false;
    if (value.toVariant().typeId() == QMetaType::LongLong)
        return true;
    const double number = value.toDouble();
    return number >= -0x1p63 && number < 0x1p63 && static_cast<double>(static_cast<qint64>(number)) == number;
}

std::optional<JsonError> misfitOfElements(const QJsonArray &elements, const JsonShape &shape)
{
    for (const QJsonValue element : elements) {
        if (element.isNull())
            return JsonError::Missing;
        if (!element.isObject())
            return JsonError::WrongFormat;
        if (const auto misfit = misfitOfObject(element.toObject(), shape))
            return misfit;
    }
    return {};
}

std::optional<JsonError> misfitOfValue(const QJsonValue &value, const JsonField &field)
{
    const auto unless = [](bool fits) { return fits ? std::nullopt : std::optional(JsonError::WrongFormat); };
    const bool absent = value.isUndefined() || value.isNull();
    if (absent)
        return field.kind == JsonField::Kind::RequiredText ? std::optional(JsonError::Missing) : std::nullopt;
    switch (field.kind) {
    case JsonField::Kind::Integer:
        return unless(isInteger(value));
    case JsonField::Kind::Record:
        return value.isObject() ? misfitOfObject(value.toObject(), field.fields) : unless(false);
    case JsonField::Kind::List:
        return value.isArray() ? misfitOfElements(value.toArray(), field.fields) : unless(false);
    case JsonField::Kind::Text:
    case JsonField::Kind::RequiredText:
        break;
    }
    return unless(value.isString());
}

std::optional<JsonError> misfitOfObject(const QJsonObject &object, const JsonShape &shape)
{
    for (const JsonField &field : shape) {
        if (const auto misfit = misfitOfValue(object.value(field.key), field))
            return misfit;
    }
    return {};
}

} // namespace

std::optional<JsonError> misfit(const QByteArray &body, const JsonShape &shape)
{
    const QJsonDocument document = QJsonDocument::fromJson(body);
    return document.isObject() ? misfitOfObject(document.object(), shape) : JsonError::WrongFormat;
}
