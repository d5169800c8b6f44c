// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Http/HttpSession.h"
#include "LoopbackService.h"

#include <QCoreApplication>
#include <QCoroTask>
#include <QDir>
#include <QTest>

#include <fcntl.h>

using namespace Qt::StringLiterals;

namespace {

QList<int> openFiles()
{
    QList<int> files;
    const QStringList names = QDir(u"/proc/self/fd"_s).entryList(QDir::Files | QDir::System);
    for (const QString &name : names)
        files.append(name.toInt());
    return files;
}

bool isInherited(int file) { return (::fcntl(file, F_GETFD) & FD_CLOEXEC) == 0; }

} // namespace

/// What a program that this one starts, such as the browser, gets to hold of the connections.
class InheritedSocketsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void inputOutputAndErrorsAloneAreInherited()
    {
        const LoopbackService service(LoopbackService::Transport::Tls);
        QVERIFY(QCoro::waitFor(HttpSession::shared().data(QUrl(service.origin()))).has_value());
        QVERIFY(openFiles().contains(3));
        for (const int file : openFiles()) {
            if (::fcntl(file, F_GETFD) >= 0) // the look into the folder is over
                QCOMPARE(isInherited(file), file <= 2);
        }
    }
};

int main(int argc, char **argv)
{
    ::open("/dev/null", O_RDONLY); // the first file after errors, before anything else has it
    const QCoreApplication application(argc, argv);
    InheritedSocketsTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "InheritedSocketsTest.moc"
