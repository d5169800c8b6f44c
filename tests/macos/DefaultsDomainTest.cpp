// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "OutputCapture.h"
#include "Preferences/AppStorage.h"
#include "Preferences/PreferenceStorage.h"
#include "StandIn.h"

#include <QTest>

#include <limits>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

const QString domain = u"app.vantelo.Vantelo Test"_s;

} // namespace

/// The preferences on macOS, on a stand-in for the calls that they make.
class DefaultsDomainTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_store = std::make_unique<DefaultsStore>(); }

    void cleanup()
    {
        m_store.reset();
        CoreFoundation::setDiskFails(false);
        CoreFoundation::clear();
        QCOMPARE(CoreFoundation::objectsInUse(), 0); // nothing is leaked
    }

    void anAbsentKeyReadsAsItsFallbackWhichIsNeverWritten()
    {
        QCOMPARE(text().get(), u"fallback"_s);
        QCOMPARE(integer().get(), 15);
        QVERIFY(!CoreFoundation::stored(domain, u"text"_s).isValid());
    }

    void everyKindIsStoredAsThatKindInTheBundlesDomain()
    {
        text().set(u"1"_s);
        integer().set(20);
        real().set(20.0);
        flag().set(false);
        const auto isStored = [](const QString &key, const QVariant &value) {
            const QVariant stored = CoreFoundation::stored(domain, key);
            return stored == value && stored.typeId() == value.typeId();
        };
        QVERIFY(isStored(u"text"_s, u"1"_s));
        QVERIFY(isStored(u"integer"_s, qlonglong{20}));
        QVERIFY(isStored(u"real"_s, 20.0));
        QVERIFY(isStored(u"flag"_s, false));
    }

    void whatIsWrittenIsReadByTheNextProcess()
    {
        const QString hard = u" a\0b\xd800 🟢\n"_s;
        text().set(hard);
        real().set(0.1 + 0.2);
        flag().set(false);
        for (const auto number : {std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::int64_t>::max()}) {
            integer().set(number);
            m_store = std::make_unique<DefaultsStore>();
            QCOMPARE(integer().get(), number);
        }
        QCOMPARE(text().get(), hard);
        QVERIFY(real().get() == 0.1 + 0.2);
        QCOMPARE(flag().get(), false);
    }

    void aWholeNumberIsReadHoweverItWasWritten_data()
    {
        QTest::addColumn<QVariant>("written");
        QTest::addColumn<std::int64_t>("read");
        QTest::newRow("-int 20") << QVariant(20) << std::int64_t{20};
        QTest::newRow("-float 20") << QVariant(20.0) << std::int64_t{20};
        QTest::newRow("-float 1e15") << QVariant(1e15) << std::int64_t{1'000'000'000'000'000};
        QTest::newRow("-float -9223372036854775808")
            << QVariant(-9223372036854775808.0) << std::numeric_limits<std::int64_t>::min();
        QTest::newRow("-string 20") << QVariant(u"20"_s) << std::int64_t{20};
        const std::int64_t fallback = 15;
        QTest::newRow("-float 20.5") << QVariant(20.5) << fallback;
        QTest::newRow("-float 9223372036854775808") << QVariant(9223372036854775808.0) << fallback;
        QTest::newRow("-float inf") << QVariant(std::numeric_limits<double>::infinity()) << fallback;
        QTest::newRow("-float nan") << QVariant(std::numeric_limits<double>::quiet_NaN()) << fallback;
        QTest::newRow("-int beyond 64 bits") << QVariant(qulonglong{1} << 63U) << fallback;
        QTest::newRow("-string soon") << QVariant(u"soon"_s) << fallback;
        QTest::newRow("-bool YES") << QVariant(true) << fallback;
        QTest::newRow("-data 20") << QVariant("20"_ba) << fallback;
        QTest::newRow("-array 20") << QVariant(QStringList{u"20"_s}) << fallback;
    }

    void aWholeNumberIsReadHoweverItWasWritten()
    {
        QFETCH(const QVariant, written);
        QFETCH(const std::int64_t, read);
        CoreFoundation::write(domain, u"integer"_s, written);
        QCOMPARE(integer().get(), read);
    }

    void aRealNumberIsReadHoweverItWasWritten()
    {
        for (const QVariant &written : {QVariant(20), QVariant(20.0), QVariant(u"20"_s), QVariant(u"2e1"_s)}) {
            CoreFoundation::write(domain, u"real"_s, written);
            QCOMPARE(real().get(), 20.0);
        }
    }

    void aFlagIsReadHoweverItWasWritten()
    {
        for (const QVariant &written : {QVariant(false), QVariant(0), QVariant(u"false"_s), QVariant(u"0"_s)}) {
            CoreFoundation::write(domain, u"flag"_s, written);
            QCOMPARE(flag().get(), false);
        }
    }

    void aTextStaysATextAndNothingElseBecomesOne()
    {
        CoreFoundation::write(domain, u"text"_s, u"00123"_s);
        QCOMPARE(text().get(), u"00123"_s);
        for (const QVariant &written : {QVariant(123), QVariant(1.5), QVariant(true), QVariant("123"_ba)}) {
            CoreFoundation::write(domain, u"text"_s, written);
            QCOMPARE(text().get(), u"fallback"_s);
        }
    }

    void whatAnotherProgramWritesIsSeenByTheNextRead()
    {
        QCOMPARE(text().get(), u"fallback"_s);
        CoreFoundation::write(domain, u"text"_s, u"first"_s);
        QCOMPARE(text().get(), u"first"_s);
        text().set(u"own"_s);
        CoreFoundation::write(domain, u"text"_s, u"second"_s);
        QCOMPARE(text().get(), u"second"_s);
    }

    void aTransactionSeesTheStoreAsItWasAtItsBeginAndWritesAtItsEnd()
    {
        CoreFoundation::write(domain, u"text"_s, u"before"_s);
        {
            const DefaultsStore::Transaction together(*m_store);
            CoreFoundation::write(domain, u"text"_s, u"meanwhile"_s);
            QCOMPARE(text().get(), u"before"_s);
            integer().set(12345);
            QCOMPARE(integer().get(), 12345);
            QVERIFY(!CoreFoundation::stored(domain, u"integer"_s).isValid());
        }
        QCOMPARE(CoreFoundation::stored(domain, u"integer"_s), QVariant(12345));
    }

    void valuesOfOtherDomainsAreNotTaken()
    {
        for (const QString &other : {u"app.vantelo.Vantelo"_s, u"NSGlobalDomain"_s})
            CoreFoundation::write(other, u"text"_s, u"foreign"_s);
        QCOMPARE(text().get(), u"fallback"_s);
    }

    void aFailedWriteIsToldOnceUntilOneSucceeds()
    {
        OutputCapture output;
        CoreFoundation::setDiskFails(true);
        text().set(u"one"_s);
        integer().set(1);
        const QByteArray told = "Vantelo: The preferences cannot be saved; changes last until the program ends.\n";
        QCOMPARE(output.diagnostics(), told);
        QCOMPARE(text().get(), u"one"_s); // it lives on in memory
        CoreFoundation::setDiskFails(false);
        integer().set(2);
        QCOMPARE(CoreFoundation::stored(domain, u"text"_s).toString(), u"one"_s);
        CoreFoundation::setDiskFails(true);
        integer().set(3);
        QCOMPARE(output.diagnostics(), told + told);
    }

private:
    AppStorage<QString> text() { return {*m_store, u"text"_s, u"fallback"_s}; }
    AppStorage<std::int64_t> integer() { return {*m_store, u"integer"_s, 15}; }
    AppStorage<double> real() { return {*m_store, u"real"_s, 0.5}; }
    AppStorage<bool> flag() { return {*m_store, u"flag"_s, true}; }

    std::unique_ptr<DefaultsStore> m_store;
};

QTEST_GUILESS_MAIN(DefaultsDomainTest)
#include "DefaultsDomainTest.moc"
