// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Http/HttpSession.h"
#include "LoopbackService.h"

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
        const int ours = ::open("/dev/null", O_RDONLY); // the first free one, on any system that starts the test
        QVERIFY(ours > 2);
        const LoopbackService service(LoopbackService::Transport::Tls);
        QVERIFY(QCoro::waitFor(HttpSession::shared().data(QUrl(service.origin()))).has_value());
        QVERIFY(openFiles().size() > 4);
        for (const int file : openFiles()) {
            if (::fcntl(file, F_GETFD) >= 0) // the look into the folder is over
                QCOMPARE(isInherited(file), file <= 2);
        }
        ::close(ours);
    }
};

QTEST_GUILESS_MAIN(InheritedSocketsTest)
#include "InheritedSocketsTest.moc"
