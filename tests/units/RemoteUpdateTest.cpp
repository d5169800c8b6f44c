// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Update/RemoteUpdate.h"
#include "Foundation/JsonReader.h"
#include "Json.h"

#include <QTest>

using namespace Qt::StringLiterals;

class RemoteUpdateTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aFeedIsRead()
    {
        const auto update = decodeJson<RemoteUpdate>(
            json("{'version': '1.4.0', 'download_url': 'https://a.example/', 'release_notes': 'Better.', 'size': 5}"));
        QVERIFY(update);
        QCOMPARE(update->version, u"1.4.0"_s);
        QCOMPARE(update->download_url, u"https://a.example/"_s);
        QCOMPARE(*update->release_notes, u"Better."_s);
    }

    void releaseNotesMayBeAbsentOrNull()
    {
        QVERIFY(!decodeJson<RemoteUpdate>(json("{'version': '1', 'download_url': 'x'}"))->release_notes);
        QVERIFY(!decodeJson<RemoteUpdate>(json("{'version': '1', 'download_url': 'x', 'release_notes': null}"))
                     ->release_notes);
    }

    void versionAndAddressAreRequired()
    {
        QVERIFY(!decodeJson<RemoteUpdate>(json("{'version': '1'}")));
        QVERIFY(!decodeJson<RemoteUpdate>(json("{'download_url': 'x'}")));
        QVERIFY(!decodeJson<RemoteUpdate>(json("{'Version': '1', 'download_url': 'x'}")));
        QVERIFY(!decodeJson<RemoteUpdate>(json("{'version': 1, 'download_url': 'x'}")));
        QVERIFY(!decodeJson<RemoteUpdate>(json("{'version': '1', 'download_url': 'x', 'release_notes': 1}")));
    }

    void whatIsWrittenIsReadAgain()
    {
        const RemoteUpdate update{
            .version = u"2.0"_s, .download_url = u"https://b.example/é"_s, .release_notes = u""_s};
        const auto read = decodeJson<RemoteUpdate>(update.toJson());
        QVERIFY(read);
        QCOMPARE(read->version, update.version);
        QCOMPARE(read->download_url, update.download_url);
        QCOMPARE(read->release_notes, update.release_notes);
    }

    void releaseNotesAreWrittenOnlyWhenPresent()
    {
        const RemoteUpdate update{.version = u"2.0"_s, .download_url = u"x"_s, .release_notes = {}};
        QCOMPARE(update.toJson(), json("{'download_url':'x','version':'2.0'}"));
    }
};

QTEST_GUILESS_MAIN(RemoteUpdateTest)
#include "RemoteUpdateTest.moc"
