// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "DarkPreferenceFixture.h"
#include "PaintedPixels.h"

#include <QDBusPendingCall>
#include <QLabel>
#include <QScrollArea>

using namespace Qt::StringLiterals;

/// The windows on a desktop whose portal tells of the user's preference. One test after the other, as in one session.
class DarkPortalTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void nothingIsAskedBeforeTheFirstWindow()
    {
        QTest::qWait(100); // for nothing to come
        QCOMPARE(m_portal.calls(), 0);
    }

    void theFirstWindowTurnsDark()
    {
        m_guide = DarkPreference::openGuide();
        QTRY_VERIFY(DarkPreference::isDark(m_guide));
        QCOMPARE(m_portal.calls(), 1);
    }

    void textsAreReadableInTheDark()
    {
        QWidget *const page = m_guide->findChild<QScrollArea *>()->widget();
        const auto labels = page->findChildren<QLabel *>();
        QVERIFY(!labels.isEmpty());
        for (const QLabel *label : labels) {
            const QImage text =
                PaintedPixels::part(PaintedPixels::of(page, label), label->contentsRect()); // without its mark
            const double strongest = PaintedPixels::strongest(text, PaintedPixels::ground(text));
            QVERIFY2(strongest >= 4.5, qPrintable(label->text()));
        }
    }

    void aChangeIsFollowedWhileAWindowIsOpen()
    {
        m_portal.change(2); // light
        QTRY_VERIFY(!DarkPreference::isDark(m_guide));
        m_portal.change(1);
        QTRY_VERIFY(DarkPreference::isDark(m_guide));
        m_portal.change(0); // no preference
        QTRY_VERIFY(!DarkPreference::isDark(m_guide));
    }

    void laterWindowsAskNoMore()
    {
        m_portal.change(1);
        QTRY_VERIFY(DarkPreference::isDark(m_guide));
        WindowManager::shared().closeAll();
        m_guide = DarkPreference::openGuide();
        QVERIFY(DarkPreference::isDark(m_guide)); // from its first moment
        m_portal.change(2);
        QTRY_VERIFY(!DarkPreference::isDark(m_guide));
        WindowManager::shared().closeAll();
        m_guide = DarkPreference::openGuide();
        QCOMPARE(callsUpToHere(), 1);
        WindowManager::shared().closeAll();
    }

private:
    /// The calls of this program so far; one of the test's own comes behind them.
    int callsUpToHere() const
    {
        QDBusMessage own = QDBusMessage::createMethodCall(u"org.freedesktop.portal.Desktop"_s,
            u"/org/freedesktop/portal/desktop"_s, u"org.freedesktop.portal.Settings"_s, u"Read"_s);
        own << QString() << QString();
        const QDBusPendingCall answer = QDBusConnection::sessionBus().asyncCall(own);
        return QTest::qWaitFor([&] { return answer.isFinished(); }) ? m_portal.calls() - 1 : -1;
    }

    FakePortal m_portal{1};
    QWidget *m_guide = nullptr;
};

int main(int argc, char **argv)
{
    const TestSessionBus bus;
    const QApplication application(argc, argv);
    DarkPortalTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "DarkPortalTest.moc"
