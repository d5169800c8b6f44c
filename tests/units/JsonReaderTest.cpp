// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Foundation/JsonReader.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

struct Leaf {
    std::optional<QString> name;

    static Leaf read(JsonReader &reader) { return {.name = reader.text(u"name"_s)}; }
};

struct Tree {
    std::optional<QString> text;
    std::optional<std::int64_t> integer;
    std::optional<Leaf> leaf;
    std::optional<std::vector<Leaf>> leaves;

    static Tree read(JsonReader &reader)
    {
        return {.text = reader.text(u"text"_s),
            .integer = reader.integer(u"integer"_s),
            .leaf = reader.record<Leaf>(u"leaf"_s),
            .leaves = reader.list<Leaf>(u"leaves"_s)};
    }
};

struct Named {
    QString name;

    static Named read(JsonReader &reader) { return {.name = reader.requiredText(u"name"_s)}; }
};

struct FullName {
    QString first;
    QString last;

    static FullName read(JsonReader &reader)
    {
        return {.first = reader.requiredText(u"first"_s), .last = reader.requiredText(u"last"_s)};
    }
};

/// What became of a body: "ok" or the sentence for the user.
template <class Record>
QString outcome(const QByteArray &body)
{
    const auto record = decodeJson<Record>(body);
    return record ? u"ok"_s : describe(record.error());
}

const QString wrongFormat = u"The data couldn’t be read because it isn’t in the correct format."_s;
const QString missing = u"The data couldn’t be read because it is missing."_s;

} // namespace

class JsonReaderTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void bodiesDecodeOrSayWhyNot_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char *name, const QByteArray &body, const QString &expected) {
            QTest::newRow(name) << body << expected;
        };
        row("empty object", "{}", u"ok"_s);
        row("white space around", " \r\n{}\t\n", u"ok"_s);
        row("unknown keys", R"({"other": [1, {"deep": null}], "Text": 5})", u"ok"_s);
        row("nulls", R"({"text": null, "integer": null, "leaf": null, "leaves": null})", u"ok"_s);
        row("empty list", R"({"leaves": []})", u"ok"_s);
        row("empty body", "", wrongFormat);
        row("not JSON", "<html></html>", wrongFormat);
        row("cut short", R"({"text": "a")", wrongFormat);
        row("more behind the object", "{} {}", wrongFormat);
        row("top-level list", "[]", wrongFormat);
        row("top-level text", R"("text")", wrongFormat);
        row("top-level null", "null", wrongFormat);
        row("invalid UTF-8", "{\"text\": \"\xff\"}", wrongFormat);
        row("a number for a text", R"({"text": 1})", wrongFormat);
        row("a boolean for a text", R"({"text": false})", wrongFormat);
        row("a list for a text", R"({"text": ["a"]})", wrongFormat);
        row("an object for a text", R"({"text": {}})", wrongFormat);
        row("a text for an integer", R"({"integer": "1"})", wrongFormat);
        row("a boolean for an integer", R"({"integer": true})", wrongFormat);
        row("a fraction for an integer", R"({"integer": 190.5})", wrongFormat);
        row("an integer beyond 64 bits", R"({"integer": 9223372036854775808})", wrongFormat);
        row("a list for an object", R"({"leaf": []})", wrongFormat);
        row("a text for an object", R"({"leaf": "name"})", wrongFormat);
        row("an object for a list", R"({"leaves": {}})", wrongFormat);
        row("a text for a list", R"({"leaves": ""})", wrongFormat);
        row("a wrong type deep inside", R"({"leaves": [{"name": "a"}, {"name": 1}]})", wrongFormat);
        row("a text inside a list of objects", R"({"leaves": [{}, "a"]})", wrongFormat);
        row("a null inside a list", R"({"leaves": [{}, null]})", missing);
    }

    void bodiesDecodeOrSayWhyNot()
    {
        QFETCH(const QByteArray, body);
        QTEST(outcome<Tree>(body), "expected");
    }

    void absentAndNullMembersReadAsAbsent()
    {
        const auto tree = decodeJson<Tree>(R"({"text": null})");
        QVERIFY(tree);
        QVERIFY(!tree->text && !tree->integer && !tree->leaf && !tree->leaves);
    }

    void presentMembersAreRead()
    {
        const auto tree = decodeJson<Tree>(
            R"({"text": "a_\u00e9", "integer": 190, "leaf": {"name": ""}, "leaves": [{}, {"name": "b"}]})");
        QVERIFY(tree);
        QCOMPARE(*tree->text, u"a_é"_s);
        QCOMPARE(*tree->integer, 190);
        QCOMPARE(*tree->leaf->name, QString());
        QCOMPARE(tree->leaves->size(), 2U);
        QVERIFY(!tree->leaves->at(0).name);
        QCOMPARE(*tree->leaves->at(1).name, u"b"_s);
    }

    void wholeNumbersWrittenWithAPointAreIntegers()
    {
        QCOMPARE(*decodeJson<Tree>(R"({"integer": 190.0})")->integer, 190);
        QCOMPARE(*decodeJson<Tree>(R"({"integer": 9223372036854775807})")->integer, 9223372036854775807);
    }

    void keysMatchExactly()
    {
        const auto tree = decodeJson<Tree>(R"({"TEXT": "a", "text ": "b"})");
        QVERIFY(tree && !tree->text);
    }

    void aRequiredTextMustBeThere()
    {
        QCOMPARE(outcome<Named>(R"({"name": ""})"), u"ok"_s);
        QCOMPARE(outcome<Named>("{}"), missing);
        QCOMPARE(outcome<Named>(R"({"name": null})"), missing);
        QCOMPARE(outcome<Named>(R"({"name": 1})"), wrongFormat);
    }

    void theFirstErrorIsTheOneTold()
    {
        QCOMPARE(outcome<FullName>(R"({"last": 1})"), missing);
        QCOMPARE(outcome<FullName>(R"({"first": 1})"), wrongFormat);
    }
};

QTEST_GUILESS_MAIN(JsonReaderTest)
#include "JsonReaderTest.moc"
