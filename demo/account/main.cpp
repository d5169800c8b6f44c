// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "AccountServer.h"
#include "DemoWorld.h"

#include <QCoreApplication>
#include <QTextStream>

using namespace Qt::StringLiterals;

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    AccountServer server{AccountStory(QDate::currentDate())};
    if (!server.listen(DemoWorld::port)) {
        QTextStream(stderr) << u"The demo account cannot be served: port %1 on loopback is not free (%2).\n"_s.arg(
            QString::number(DemoWorld::port), server.errorString());
        return 1;
    }
    QTextStream(stdout) << u"The demo account is served at %1\n"_s.arg(server.origin()) << Qt::flush;
    return QCoreApplication::exec();
}
