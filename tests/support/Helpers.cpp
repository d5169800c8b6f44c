// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Helpers.h"

#include <QProcess>
#include <QStandardPaths>

#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

[[noreturn]] void endWithout(const QString &helper)
{
    constexpr int notRun = 77; // tests/CMakeLists.txt says so to ctest
    const bool mustRun = qEnvironmentVariableIsSet("CI");
    std::fprintf(
        stderr, "%s without %s.\n", mustRun ? "FAILED: in CI this has to run, not" : "NOT RUN:", qPrintable(helper));
    std::exit(mustRun ? EXIT_FAILURE : notRun);
}

} // namespace

void requirePrograms(const QStringList &programs)
{
    for (const QString &program : programs) {
        if (QStandardPaths::findExecutable(program).isEmpty())
            endWithout(program);
    }
}

void requireStatusHost()
{
    if (QProcess::execute(QStringLiteral(VANTELO_TEST_SUPPORT "/status_host.py"), {u"--check"_s}) != 0)
        endWithout(u"what tests/support/status_host.py needs"_s);
}
