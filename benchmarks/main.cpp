// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "BenchmarkAccount.h"

#include <QApplication>
#include <QLoggingCategory>

#include <benchmark/benchmark.h>

#include <cstdio>

using namespace Qt::StringLiterals;

int main(int argc, char **argv)
{
    benchmark::Initialize(&argc, argv);
    // The offscreen platform warns at each window that it has no others to raise it above.
    QLoggingCategory::setFilterRules(u"default.warning=false"_s);
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setApplicationVersion(u"1.0.0"_s);
    if (!BenchmarkAccount::open()) {
        std::fputs("The account on loopback gave no figures.\n", stderr);
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    BenchmarkAccount::close();
    return 0;
}
