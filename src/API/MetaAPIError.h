// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <utility>

/// Why figures could not be fetched. Callers use only its text.
class MetaAPIError {
public:
    /// The transfer failed or its body did not decode; the text is the platform's own description.
    static MetaAPIError networkError(const QString &description);
    /// The service reported an error; the text is its message.
    static MetaAPIError apiError(const QString &message);
    /// The composed address is no valid URL.
    static MetaAPIError invalidURL();
    /// Not produced: a body that does not decode is a network error, so that the user reads what was wrong.
    static MetaAPIError decodingError();

    /// The text for the user. Never holds an address.
    QString errorDescription() const;

private:
    enum class Case { NetworkError, ApiError, InvalidURL, DecodingError };

    MetaAPIError(Case kind, QString text) : m_case(kind), m_text(std::move(text)) {}

    Case m_case;
    QString m_text;
};
