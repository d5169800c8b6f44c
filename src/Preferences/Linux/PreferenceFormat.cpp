// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Preferences/Linux/PreferenceFormat.h"

#include "Foundation/Log.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

// The dialect of QSettings' own format for texts, numbers and flags, so that each reads the files of the other. That
// format itself will not do: at a write it drops the lines that it cannot read, and it makes an object of whatever
// type a value names. Here values stay as they stand until they are asked for, and lines that cannot be read stay, too.

using namespace Qt::StringLiterals;
using PreferenceFormat::Entries;

namespace {

/// Begins the keys of lines that are kept but mean nothing.
constexpr QChar otherLine = u'\n';

constexpr std::array<std::pair<char16_t, char16_t>, 9> shortEscapes{{{u'a', u'\a'}, {u'b', u'\b'}, {u'f', u'\f'},
    {u'n', u'\n'}, {u'r', u'\r'}, {u't', u'\t'}, {u'v', u'\v'}, {u'"', u'"'}, {u'\\', u'\\'}}};

// Reading

/// A section's name, or an entry's key and value.
const QRegularExpression &readableLine()
{
    static const QRegularExpression expression(
        uR"(\A[ \t]*+(?:\[([\w.%-]++)\][ \t]*+(?:;.*+)?+|([\w.%\\-]++)[ \t]*+=(.*+))\z)"_s,
        QRegularExpression::DotMatchesEverythingOption);
    return expression;
}

class Lines {
public:
    void read(const QByteArray &line)
    {
        const QByteArray text = line.trimmed();
        // Latin-1 keeps every byte what it is.
        const QRegularExpressionMatch match = readableLine().match(QString::fromLatin1(line));
        if (text.startsWith('['))
            enter(match);
        if (text.isEmpty())
            return;
        if (!match.hasMatch() || !m_sectionIsReadable)
            keep(line, !text.startsWith(';'));
        else if (!match.captured(2).isEmpty())
            m_entries.insert(m_section + match.captured(2), match.captured(3).toLatin1());
    }

    const Entries &entries() const { return m_entries; }
    bool areReadable() const { return m_areReadable; }

private:
    void enter(const QRegularExpressionMatch &header)
    {
        // Without its header the rest of a section must not be taken for the section before.
        m_sectionIsReadable = header.hasMatch();
        const QString name = header.captured(1);
        m_section = name.compare("general"_L1, Qt::CaseInsensitive) == 0 ? QString() : name + u'/';
    }

    void keep(const QByteArray &line, bool damaged)
    {
        m_entries.insert(otherLine + QString::number(m_entries.size()).rightJustified(9, u'0'), line); // in their order
        m_areReadable = m_areReadable && !damaged;
    }

    Entries m_entries;
    QString m_section;
    bool m_sectionIsReadable = true;
    bool m_areReadable = true;
};

// Writing

void writeEntries(QByteArray &content, const Entries &entries, bool general)
{
    QString section;
    for (auto entry = entries.cbegin(); entry != entries.cend(); ++entry) {
        const qsizetype slash = entry.key().indexOf(u'/');
        if (entry.key().startsWith(otherLine) || general != (slash < 0))
            continue;
        const QString name = general ? u"General"_s : entry.key().first(slash);
        if (name != section)
            content += (content.isEmpty() ? "[" : "\n[") + name.toLatin1() + "]\n";
        section = name;
        content += entry.key().sliced(slash + 1).toLatin1() + '=' + *entry + '\n';
    }
}

// Texts

QString escaped(const QString &text)
{
    QString result;
    bool escapeDigits = false; // they would belong to the escape before
    for (const QChar character : text) {
        const auto *const shortOne =
            std::ranges::find(shortEscapes, character.unicode(), &std::pair<char16_t, char16_t>::second);
        const bool digit =
            (character >= u'0' && character <= u'9') || (character.toLower() >= u'a' && character.toLower() <= u'f');
        const bool asNumber = character < u' ' || (escapeDigits && digit);
        if (shortOne != shortEscapes.end())
            result += u'\\' + QChar(shortOne->first);
        else if (asNumber)
            result += u"\\x"_s + QString::number(character.unicode(), 16);
        else
            result += character;
        escapeDigits = asNumber && shortOne == shortEscapes.end();
    }
    return result;
}

QByteArray storedText(const QString &text)
{
    static const QRegularExpression needsQuotes(u"[;,=]|\\A[ \\x{FEFF}]| \\z"_s);
    const QString marked = escaped(text.startsWith(u'@') ? u'@' + text : text);
    return (marked.contains(needsQuotes) ? u'"' + marked + u'"' : marked).toUtf8();
}

/// Nothing where an escape is unknown.
std::optional<QString> unescaped(const QString &text)
{
    static const QRegularExpression escape(
        uR"(\\(?:x([[:xdigit:]]{1,4})(?![[:xdigit:]])|(0)(?![0-7])|([abfnrtv"\\])|))"_s);
    QString result;
    qsizetype done = 0;
    for (auto escapes = escape.globalMatch(text); escapes.hasNext();) {
        const QRegularExpressionMatch match = escapes.next();
        result += QStringView(text).sliced(done, match.capturedStart() - done);
        done = match.capturedEnd();
        if (match.capturedLength() == 1)
            return {};
        if (!match.captured(3).isEmpty())
            result += QChar(std::ranges::find(
                shortEscapes, match.captured(3).front().unicode(), &std::pair<char16_t, char16_t>::first)
                                ->second);
        else
            result += QChar(match.captured(1).toUShort(nullptr, 16));
    }
    return result += QStringView(text).sliced(done);
}

QString withoutBlanksAtEnd(QString text)
{
    while (text.endsWith(u' ') || text.endsWith(u'\t'))
        text.chop(1);
    return text;
}

/// Nothing for lists, and for the objects that QSettings writes behind a "@".
std::optional<QString> textOf(const QByteArray &stored)
{
    static const QRegularExpression value(
        uR"re(\A[ \t]*+(?:"((?:[^"\\]|\\.)*+)"|((?:[^"\\,;]|\\.)*+))[ \t]*+(?:;.*+)?+\z)re"_s,
        QRegularExpression::DotMatchesEverythingOption);
    if (!QByteArrayView(stored).isValidUtf8())
        return {};
    const QRegularExpressionMatch match = value.match(QString::fromUtf8(stored));
    if (!match.hasMatch())
        return {};
    std::optional<QString> text =
        unescaped(match.hasCaptured(1) ? match.captured(1) : withoutBlanksAtEnd(match.captured(2)));
    if (!text || !text->startsWith(u'@'))
        return text;
    if (text->startsWith(u"@@"))
        return text->sliced(1);
    if (!text->endsWith(u')'))
        return text;
    const QString asText = u"@String("_s; // for texts with a NUL
    return text->startsWith(asText) ? std::optional(text->sliced(asText.size()).chopped(1)) : std::nullopt;
}

} // namespace

PreferenceFormat::Entries PreferenceFormat::entries(QByteArray content)
{
    if (content.startsWith("\xEF\xBB\xBF")) // some editors put it there
        content.remove(0, 3);
    Lines lines;
    const QList<QByteArray> all = content.replace('\r', '\n').split('\n');
    for (const QByteArray &line : all)
        lines.read(line);
    if (!lines.areReadable())
        logLine(u"Parts of the preference file cannot be read; they stay in it as they are."_s);
    return lines.entries();
}

QByteArray PreferenceFormat::content(const Entries &entries)
{
    QByteArray content;
    writeEntries(content, entries, true);
    writeEntries(content, entries, false);
    for (auto line = entries.cbegin(); line != entries.cend(); ++line) {
        if (line.key().startsWith(otherLine))
            content += *line + '\n';
    }
    return content;
}

QByteArray PreferenceFormat::stored(const QVariant &value) { return storedText(value.toString()); }

QVariant PreferenceFormat::value(const QByteArray &stored)
{
    const std::optional<QString> text = textOf(stored);
    return text ? QVariant(*text) : QVariant();
}
