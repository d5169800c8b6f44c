// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "API/MetaAPIError.h"

using namespace Qt::StringLiterals;

MetaAPIError MetaAPIError::networkError(const QString &description) { return {Case::NetworkError, description}; }

MetaAPIError MetaAPIError::apiError(const QString &message) { return {Case::ApiError, message}; }

MetaAPIError MetaAPIError::invalidURL() { return {Case::InvalidURL, {}}; }

MetaAPIError MetaAPIError::decodingError() { return {Case::DecodingError, {}}; }

QString MetaAPIError::errorDescription() const
{
    switch (m_case) {
    case Case::NetworkError:
        return u"Network error: "_s + m_text;
    case Case::ApiError:
        return m_text;
    case Case::InvalidURL:
        return u"Invalid API URL"_s;
    case Case::DecodingError:
        break;
    }
    return u"Failed to parse API response"_s;
}
