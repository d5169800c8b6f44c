// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

// Whatever a peer on the session bus calls on the item and its menu, with whatever arguments: it gets the answer
// of the protocol or an error, and nothing runs but what was clicked. A call to a connection's own name goes
// through Qt's marshalling and dispatch without leaving the process.

#include "Input.h"
#include "MenuBar/Linux/BusMenu/DBusMenu.h"
#include "MenuBar/Linux/StatusItem/StatusNotifierItem.h"
#include "Require.h"
#include "TestSessionBus.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QSet>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr int lastId = 6;
constexpr std::array clickableIds{3, 4, 6};
const QStringList propertyNames{u"type"_s, u"label"_s, u"enabled"_s, u"visible"_s};

struct Program {
    Program()
    {
        menu.setRows({MenuRow::line(u"Spend"_s), MenuRow::divider(), MenuRow::button(u"Refresh"_s, [this] { ++runs; }),
            MenuRow::button(u"Settings"_s, [this] { ++runs; }), MenuRow::line(u"a_b"_s),
            MenuRow::button(u"Quit"_s, [this] { ++runs; })});
        QObject::connect(&item, &StatusNotifierItem::menuRequested, &item, [this] { ++menuRequests; });
        // The bus warns of each call that fits no method.
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    }

    TestSessionBus bus;
    int argc = 1;
    char name[8] = "fuzzer";
    char *argv[2] = {name, nullptr};
    QCoreApplication application{argc, argv};
    QDBusConnection connection = QDBusConnection::sessionBus();
    StatusNotifierItem item{connection};
    DBusMenu menu{connection, StatusNotifierItem::menuPath()};
    int runs = 0;
    int menuRequests = 0;
};

struct Call {
    QString path;
    QString interface;
    QString method;
    QVariantList arguments;
    bool fitsItsMethod = false;
};

// Making calls

int idFrom(Input &input)
{
    const auto byte = input.number<std::int8_t>();
    return byte < 100 ? byte : input.number<std::int32_t>();
}

QString textFrom(Input &input)
{
    static const QStringList known{u"clicked"_s, u"hovered"_s, u"label"_s, u"type"_s, u"enabled"_s,
        u"children-display"_s, u"vertical"_s, u"com.canonical.dbusmenu"_s, u"org.kde.StatusNotifierItem"_s,
        u"Version"_s, u"ToolTip"_s, u""_s};
    const auto byte = input.number<std::uint8_t>();
    return byte < known.size() ? known.at(byte) : QString::fromUtf8(input.bytes(byte % 32));
}

/// Few elements mostly, many at times.
int countFrom(Input &input)
{
    const auto byte = input.number<std::uint8_t>();
    return byte < 255 ? byte % 8 : 500;
}

template <class Element>
QList<Element> listOf(Input &input, Element (*make)(Input &))
{
    QList<Element> list;
    const int count = countFrom(input);
    for (int i = 0; i < count; ++i)
        list << make(input);
    return list;
}

QVariant anyFrom(Input &input);

DBusMenuEvent eventFrom(Input &input)
{
    const int id = idFrom(input);
    const QString name = textFrom(input);
    return {.id = id, .eventId = name, .data = QDBusVariant(idFrom(input)), .timestamp = input.number<std::uint8_t>()};
}

QVariant anyFrom(Input &input)
{
    switch (input.number<std::uint8_t>() % 16) {
    case 0:
        return textFrom(input);
    case 1:
        return uint{input.number<std::uint32_t>()};
    case 2:
        return input.number<std::uint8_t>() % 2 == 1;
    case 3:
        return input.number<double>();
    case 4:
        return QVariant::fromValue(QStringList(listOf(input, &textFrom)));
    case 5:
        return QVariant::fromValue(listOf(input, &idFrom));
    case 6:
        return QVariant::fromValue(QDBusVariant(input.size() > 0 ? anyFrom(input) : QVariant(0)));
    case 7:
        return QVariant::fromValue(listOf(input, &eventFrom));
    case 8:
        return QVariantMap{{textFrom(input), input.size() > 0 ? anyFrom(input) : QVariant(0)}};
    case 9:
        return input.bytes(input.number<std::uint8_t>());
    case 10:
        return QVariant::fromValue(QDBusObjectPath(u"/a/b"_s));
    case 11:
        return QVariant::fromValue(DBusMenuItem{.id = idFrom(input), .properties = {{textFrom(input), 1}}});
    case 12:
        return qlonglong{input.number<std::int64_t>()};
    default:
        return idFrom(input);
    }
}

QVariantList argumentsOf(const QString &signature, Input &input)
{
    QVariantList arguments;
    for (qsizetype i = 0; i < signature.size(); ++i) {
        const QStringView rest = QStringView(signature).sliced(i);
        if (rest.startsWith(u"as"_s))
            arguments << QVariant::fromValue(QStringList(listOf(input, &textFrom)));
        else if (rest.startsWith(u"ai"_s))
            arguments << QVariant::fromValue(listOf(input, &idFrom));
        else if (rest.startsWith(u"a(isvu)"_s))
            arguments << QVariant::fromValue(listOf(input, &eventFrom));
        else if (rest.startsWith(u'i'))
            arguments << idFrom(input);
        else if (rest.startsWith(u'u'))
            arguments << uint{input.number<std::uint32_t>()};
        else if (rest.startsWith(u's'))
            arguments << textFrom(input);
        else if (rest.startsWith(u'v'))
            arguments << QVariant::fromValue(QDBusVariant(anyFrom(input)));
        if (rest.startsWith(u"a("_s))
            break;
        i += rest.startsWith(u'a') ? 1 : 0;
    }
    return arguments;
}

struct Method {
    QString path;
    QString interface;
    QString name;
    QString signature;
};

const QList<Method> &methods()
{
    static const QString item = u"org.kde.StatusNotifierItem"_s;
    static const QString menu = u"com.canonical.dbusmenu"_s;
    static const QString properties = u"org.freedesktop.DBus.Properties"_s;
    static const QString itemPath = StatusNotifierItem::path();
    static const QString menuPath = StatusNotifierItem::menuPath();
    static const QList<Method> all{
        {menuPath, menu, u"GetLayout"_s, u"iias"_s},
        {menuPath, menu, u"GetGroupProperties"_s, u"aias"_s},
        {menuPath, menu, u"GetProperty"_s, u"is"_s},
        {menuPath, menu, u"Event"_s, u"isvu"_s},
        {menuPath, menu, u"EventGroup"_s, u"a(isvu)"_s},
        {menuPath, menu, u"AboutToShow"_s, u"i"_s},
        {menuPath, menu, u"AboutToShowGroup"_s, u"ai"_s},
        {itemPath, item, u"Activate"_s, u"ii"_s},
        {itemPath, item, u"SecondaryActivate"_s, u"ii"_s},
        {itemPath, item, u"ContextMenu"_s, u"ii"_s},
        {itemPath, item, u"Scroll"_s, u"is"_s},
        {menuPath, properties, u"Get"_s, u"ss"_s},
        {menuPath, properties, u"Set"_s, u"ssv"_s},
        {itemPath, properties, u"Get"_s, u"ss"_s},
        {itemPath, properties, u"GetAll"_s, u"s"_s},
        {itemPath, properties, u"Set"_s, u"ssv"_s},
    };
    return all;
}

QString signatureOf(const QVariantList &arguments)
{
    QString signature;
    for (const QVariant &argument : arguments)
        signature += QLatin1StringView(QDBusMetaType::typeToSignature(argument.metaType()));
    return signature;
}

Call callFrom(Input &input)
{
    const Method &method = methods().at(input.number<std::uint8_t>() % methods().size());
    const auto byte = input.number<std::uint8_t>();
    if (byte < 192)
        return {method.path, method.interface, method.name, argumentsOf(method.signature, input), true};
    QVariantList arguments;
    for (int i = 0; i < byte % 6; ++i)
        arguments << anyFrom(input);
    return {method.path, byte % 7 == 0 ? QString() : method.interface, method.name, arguments,
        signatureOf(arguments) == method.signature};
}

// What the protocol says

bool isItem(int id) { return id >= 0 && id <= lastId; }

bool isClick(int id, const QString &event)
{
    return event == u"clicked"_s && std::ranges::find(clickableIds, id) != clickableIds.end();
}

template <class Value>
Value valueOf(const QVariant &argument)
{
    return qdbus_cast<Value>(argument);
}

void checkLayout(const Call &call, const QVariantList &answer)
{
    const int parent = call.arguments[0].toInt();
    const auto names = call.arguments[2].toStringList();
    const auto layout = valueOf<DBusMenuLayoutItem>(answer.value(1));
    require(answer.size() == 2 && layout.id == parent, "the layout is that of the item asked for");
    const bool whole = parent == 0 && call.arguments[1].toInt() != 0;
    require(layout.children.size() == (whole ? lastId : 0), "only the root has rows below it");
    for (const DBusMenuLayoutItem &child : layout.children) {
        for (const QString &name : child.properties.keys())
            require(names.isEmpty() || names.contains(name), "no property comes unasked");
    }
}

void checkProperties(const Call &call, const QVariantList &answer)
{
    const auto wanted = valueOf<QList<int>>(call.arguments[0]);
    QSet<int> given;
    for (const DBusMenuItem &item : valueOf<QList<DBusMenuItem>>(answer.value(0))) {
        require(isItem(item.id) && (wanted.isEmpty() || wanted.contains(item.id)), "no item comes unasked");
        require(!given.contains(item.id), "no item comes twice");
        given << item.id;
    }
}

QList<int> unknownAmong(const QList<int> &ids)
{
    QList<int> unknown;
    std::ranges::copy_if(ids, std::back_inserter(unknown), [](int id) { return !isItem(id); });
    return unknown;
}

/// An answer that says which of these ids are unknown, or an error where they all are.
void checkUnknown(const QList<int> &ids, bool refused, const QVariantList &answer)
{
    const QList<int> unknown = unknownAmong(ids);
    require(refused == (!ids.isEmpty() && unknown == ids), "only wholly unknown ids are refused");
    require(refused || valueOf<QList<int>>(answer.last()) == unknown, "unknown ids are told");
}

void checkMenuAnswer(const Call &call, bool refused, const QVariantList &answer)
{
    const int id = call.arguments.value(0).toInt();
    if (call.method == u"GetGroupProperties"_s) {
        require(!refused, "any list of ids gets an answer");
        checkProperties(call, answer);
    } else if (call.method == u"EventGroup"_s) {
        QList<int> ids;
        for (const DBusMenuEvent &event : valueOf<QList<DBusMenuEvent>>(call.arguments[0]))
            ids << event.id;
        checkUnknown(ids, refused, answer);
    } else if (call.method == u"AboutToShowGroup"_s) {
        checkUnknown(valueOf<QList<int>>(call.arguments[0]), refused, answer);
    } else if (call.method == u"GetProperty"_s) {
        const QString name = call.arguments[1].toString();
        const bool known = id == 0 ? name == u"children-display"_s : propertyNames.contains(name);
        require(refused == !(isItem(id) && known), "an unknown property is refused");
    } else {
        require(refused == !isItem(id), "an unknown item is refused");
        if (call.method == u"GetLayout"_s && !refused)
            checkLayout(call, answer);
    }
}

int clicksIn(const Call &call)
{
    if (!call.fitsItsMethod)
        return 0;
    if (call.method == u"Event"_s)
        return isClick(call.arguments[0].toInt(), call.arguments[1].toString()) ? 1 : 0;
    int clicks = 0;
    if (call.method == u"EventGroup"_s) {
        for (const DBusMenuEvent &event : valueOf<QList<DBusMenuEvent>>(call.arguments[0]))
            clicks += isClick(event.id, event.eventId) ? 1 : 0;
    }
    return clicks;
}

bool asksForMenu(const Call &call)
{
    return call.fitsItsMethod && (call.method == u"Activate"_s || call.method == u"ContextMenu"_s);
}

void checkAnswer(const Call &call, const QDBusMessage &answer)
{
    const bool refused = answer.type() == QDBusMessage::ErrorMessage;
    require(
        refused ? !answer.errorName().isEmpty() : answer.type() == QDBusMessage::ReplyMessage, "there is an answer");
    if (!call.fitsItsMethod)
        require(refused, "a call that fits no method is refused");
    else if (call.path == StatusNotifierItem::menuPath() && call.interface == u"com.canonical.dbusmenu"_s)
        checkMenuAnswer(call, refused, answer.arguments());
    else if (call.interface == u"org.kde.StatusNotifierItem"_s)
        require(!refused, "a call to the item is accepted");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static Program program;
    Input input(data, size);
    int runs = program.runs;
    int menuRequests = program.menuRequests;
    for (int i = 0; i < 2 && input.size() > 0; ++i) {
        const Call call = callFrom(input);
        QDBusMessage message =
            QDBusMessage::createMethodCall(program.connection.baseService(), call.path, call.interface, call.method);
        message.setArguments(call.arguments);
        checkAnswer(call, program.connection.call(message));
        runs += clicksIn(call);
        menuRequests += asksForMenu(call) ? 1 : 0;
    }
    QCoreApplication::sendPostedEvents(&program.menu, QEvent::MetaCall);
    require(program.runs == runs, "what was clicked has run, and nothing else");
    require(program.menuRequests == menuRequests, "the menu was asked for as often as it was");
    return 0;
}
