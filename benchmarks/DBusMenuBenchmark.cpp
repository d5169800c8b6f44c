// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "MenuBar/Linux/BusMenu/DBusMenu.h"

#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;

namespace {

MenuRows rows(std::int64_t count, const QString &firstText)
{
    MenuRows rows{MenuRow::line(firstText)};
    for (std::int64_t i = 1; i < count; ++i)
        rows.push_back(MenuRow::line(u"💰 Spend: $%1"_s.arg(i)));
    return rows;
}

/// The menu takes over one list of rows and then another; nobody listens, so sending the changes is no part of it.
void measureChange(benchmark::State &run, const QString &oneText, const QString &otherText)
{
    DBusMenu menu(QDBusConnection(u"none"_s), u"/Menu"_s);
    const MenuRows one = rows(run.range(0), oneText);
    const MenuRows other = rows(run.range(0), otherText);
    for (auto _ : run) {
        menu.setRows(one);
        menu.setRows(other);
    }
    run.SetComplexityN(run.range(0));
}

void MenuStaysAsItIs(benchmark::State &run) { measureChange(run, u"📊 Today"_s, u"📊 Today"_s); }
BENCHMARK(MenuStaysAsItIs)->RangeMultiplier(4)->Range(20, 1280)->Complexity()->Unit(benchmark::kMicrosecond);

void MenuChangesOneText(benchmark::State &run) { measureChange(run, u"📊 Today"_s, u"📅 Last 7 Days"_s); }
BENCHMARK(MenuChangesOneText)->RangeMultiplier(4)->Range(20, 1280)->Complexity()->Unit(benchmark::kMicrosecond);

} // namespace
