// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "DarkPreferenceFixture.h"

#include <QDBusMessage>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

/// The windows on a GNOME without a portal. One test after the other, as in one session.
class DarkGnomeTest : public QObject {
    Q_OBJECT

public:
    DarkGnomeTest()
    {
        choose("prefer-dark");
        QFile tool(m_bin.filePath(u"gsettings"_s)); // stands in for the desktop's own
        if (!tool.open(QIODevice::WriteOnly))
            qFatal("no stand-in for gsettings");
        tool.write("#!/bin/sh\n[ \"$*\" = 'get org.gnome.desktop.interface color-scheme' ] && cat " +
                   m_bin.filePath(u"choice"_s).toUtf8() + "\n");
        tool.close();
        tool.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
        qputenv("PATH", m_bin.path().toUtf8() + ':' + qgetenv("PATH"));
        qputenv("XDG_CURRENT_DESKTOP", "ubuntu:GNOME");
    }

private Q_SLOTS:
    void theFirstWindowTurnsDark()
    {
        m_guide = DarkPreference::openGuide();
        QTRY_VERIFY(DarkPreference::isDark(m_guide));
    }

    void aChangeIsFollowedWhileAWindowIsOpen()
    {
        choose("default");
        announce(u"/org/gnome/desktop/interface/color-scheme"_s, {QString(u""_s)});
        QTRY_VERIFY(!DarkPreference::isDark(m_guide));
        choose("prefer-dark");
        announce(u"/org/gnome/desktop/interface/"_s, {u"gtk-theme"_s, u"color-scheme"_s});
        QTRY_VERIFY(DarkPreference::isDark(m_guide));
    }

    /// Also over an answer of GNOME's that is still to come.
    void aPortalThatComesLaterHasTheLastWord()
    {
        const QByteArray choice = QFile::encodeName(m_bin.filePath(u"choice"_s));
        QVERIFY(::unlink(choice.constData()) == 0 && ::mkfifo(choice.constData(), 0600) == 0);
        announce(u"/org/gnome/desktop/interface/color-scheme"_s, {QString(u""_s)});
        int answer = -1;
        const auto isBeingRead = [&] {
            answer = ::open(choice.constData(), O_WRONLY | O_NONBLOCK);
            return answer >= 0;
        };
        QVERIFY(QTest::qWaitFor(isBeingRead));
        FakePortal portal(2);
        portal.change(2); // light
        QTRY_VERIFY(!DarkPreference::isDark(m_guide));
        QCOMPARE(::write(answer, "'prefer-dark'\n", 14), 14);
        ::close(answer);
        QTRY_VERIFY(qApp->findChildren<QProcess *>().isEmpty()); // it has been read
        QVERIFY(!DarkPreference::isDark(m_guide));
        WindowManager::shared().closeAll();
    }

private:
    void choose(const QByteArray &scheme)
    {
        QFile choice(m_bin.filePath(u"choice"_s));
        if (choice.open(QIODevice::WriteOnly))
            choice.write('\'' + scheme + "'\n");
    }

    /// As the service that stores GNOME's settings does.
    static void announce(const QString &prefix, const QStringList &keys)
    {
        QDBusMessage changed =
            QDBusMessage::createSignal(u"/ca/desrt/dconf/Writer/user"_s, u"ca.desrt.dconf.Writer"_s, u"Notify"_s);
        changed << prefix << keys << u"tag"_s;
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"dconf"_s).send(changed);
    }

    QTemporaryDir m_bin;
    QWidget *m_guide = nullptr;
};

int main(int argc, char **argv)
{
    const TestSessionBus bus;
    const QApplication application(argc, argv);
    DarkGnomeTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "DarkGnomeTest.moc"
