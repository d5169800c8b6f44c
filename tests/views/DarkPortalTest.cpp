// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "DarkPreferenceFixture.h"
#include "PaintedPixels.h"

#include <QLabel>

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
        const auto labels = m_guide->findChildren<QLabel *>();
        QVERIFY(!labels.isEmpty());
        for (const QLabel *label : labels) {
            const QColor colour = label->palette().color(QPalette::WindowText);
            QVERIFY2(contrast(colour, DarkPreference::ground(m_guide)) >= 4.5, qPrintable(label->text()));
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
        QCOMPARE(m_portal.calls(), 1);
        WindowManager::shared().closeAll();
    }

private:
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
