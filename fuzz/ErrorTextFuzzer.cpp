// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

// Of any error text the menu shows the first 60 characters as a reader counts them.

#include "Input.h"
#include "Require.h"
#include "State/AppState.h"
#include "Views/MenuBarView.h"

#include <QCoreApplication>

#include <algorithm>

namespace {

// A status is published by a refresh only. One goes over the network, which no fuzzer has time for, so this one
// is put in its place: an explicit instantiation may name what is private.
MonitorStatus &statusOf(AppState &state);

template <MonitorStatus AppState::*member>
struct PublishedStatus {
    friend MonitorStatus &statusOf(AppState &state) { return state.*member; }
};
template struct PublishedStatus<&AppState::m_status>;

struct Program {
    int argc = 1;
    char name[8] = "fuzzer";
    char *argv[2] = {name, nullptr};
    QCoreApplication application{argc, argv};
    std::shared_ptr<AppState> state = AppState::create();
    MenuBarView view{state};
};

/// Letters and figures that are a character of their own, whatever surrounds them.
bool standsAlone(QChar unit)
{
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z') || (unit >= u'0' && unit <= u'9');
}

/// Whether no reader would call it a new character: what follows a letter and combines with it.
bool belongsTogether(const QString &text, qsizetype cut)
{
    const QChar before = text.at(cut - 1);
    const QChar after = text.at(cut);
    if (before == u'\r')
        return after == u'\n';
    if (before.isHighSurrogate())
        return after.isLowSurrogate();
    return before.isLetter() && (after.category() == QChar::Mark_NonSpacing || after == QChar(0x200D));
}

void checkCut(const QString &message, const QString &shown)
{
    require(message.startsWith(shown), "what is shown is the beginning");
    require(std::count_if(shown.begin(), shown.end(), &standsAlone) <= 60, "no more than 60 characters");
    if (shown.size() == message.size())
        return;
    require(shown.toUcs4().size() >= 60, "no fewer than 60 characters, where there are more");
    require(!belongsTogether(message, shown.size()), "no character is cut in two");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static Program program;
    const QString message = Input(data, size).text();
    statusOf(*program.state) = MonitorStatus::error(message);
    const MenuRows rows = program.view.body();
    require(rows.size() == 8 && rows[1].kind == MenuRow::Kind::Text, "the error's rows are there");
    checkCut(message, rows[1].text);
    return 0;
}
