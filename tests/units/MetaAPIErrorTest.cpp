// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "API/MetaAPIError.h"

#include <QTest>

using namespace Qt::StringLiterals;

class MetaAPIErrorTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aNetworkErrorSaysSoBeforeItsText()
    {
        QCOMPARE(MetaAPIError::networkError(u"The request timed out."_s).errorDescription(),
            u"Network error: The request timed out."_s);
    }

    void aNetworkErrorWithoutTextKeepsItsTrailingBlank()
    {
        QCOMPARE(MetaAPIError::networkError(u""_s).errorDescription(), u"Network error: "_s);
    }

    void anApiErrorIsTheMessageAsSent()
    {
        QCOMPARE(MetaAPIError::apiError(u" (#200) ads_read & “more”\n "_s).errorDescription(),
            u" (#200) ads_read & “more”\n "_s);
        QCOMPARE(MetaAPIError::apiError(u""_s).errorDescription(), u""_s);
    }

    void theOthersHaveFixedTexts()
    {
        QCOMPARE(MetaAPIError::invalidURL().errorDescription(), u"Invalid API URL"_s);
        QCOMPARE(MetaAPIError::decodingError().errorDescription(), u"Failed to parse API response"_s);
    }
};

QTEST_GUILESS_MAIN(MetaAPIErrorTest)
#include "MetaAPIErrorTest.moc"
