// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

// A second process for SingleInstanceTest: claims the place, says what came of it, and holds on until its
// standard input ends.

#include "Process/SingleInstance.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <cstdio>
#include <unistd.h>

namespace {

void say(const QByteArray &word)
{
    std::fprintf(stdout, "%s\n", word.constData());
    std::fflush(stdout);
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const auto instance = SingleInstance::claim();
    say(instance ? "claimed" : "taken");
    if (!instance)
        return 0;
    instance->onActivation([] { say("activated " + qgetenv("XDG_ACTIVATION_TOKEN")); });
    const QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &application, &QCoreApplication::quit);
    return QCoreApplication::exec();
}
