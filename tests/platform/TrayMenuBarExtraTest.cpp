// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Helpers.h"
#include "MenuBar/MenuBarExtra.h"
#include "StatusHost.h"
#include "TestDisplay.h"
#include "TestSessionBus.h"

#include <QApplication>
#include <QMenu>
#include <QScreen>
#include <QStandardPaths>
#include <QTest>
#include <QToolTip>

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

constexpr QRgb green = qRgb(0x34, 0xc7, 0x59);
constexpr QRgb red = qRgb(0xff, 0x3b, 0x30);

/// Where on the whole screen that colour is.
std::optional<QPoint> onScreen(QRgb colour)
{
    const QImage screen = QGuiApplication::primaryScreen()->grabWindow(0).toImage();
    for (int y = 0; y < screen.height(); ++y) {
        for (int x = 0; x < screen.width(); ++x) {
            if ((screen.pixel(x, y) & RGB_MASK) == (colour & RGB_MASK))
                return QPoint(x, y);
        }
    }
    return {};
}

/// Counts the tray icons that were shown, however short.
class TrayIconCounter : public QObject {
public:
    TrayIconCounter() { qApp->installEventFilter(this); }
    int count() const { return m_count; }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Show && watched->inherits("QSystemTrayIconSys"))
            ++m_count;
        return false;
    }

private:
    int m_count = 0;
};

void click(const QPoint &place, int button = 1)
{
    QProcess::execute(u"xdotool"_s,
        {u"mousemove"_s, QString::number(place.x()), QString::number(place.y()), u"click"_s, QString::number(button)});
}

/// What a window manager says that panels leave of the screen.
void setWorkArea(const QRect &area)
{
    const QString numbers = u"%1, %2, %3, %4"_s.arg(area.x()).arg(area.y()).arg(area.width()).arg(area.height());
    QProcess::execute(
        u"xprop"_s, {u"-root"_s, u"-f"_s, u"_NET_WORKAREA"_s, u"32c"_s, u"-set"_s, u"_NET_WORKAREA"_s, numbers});
    QTRY_COMPARE(QGuiApplication::primaryScreen()->availableGeometry(), area);
}

/// One in the top left corner; not every system has the same.
std::pair<QString, QStringList> tray()
{
    if (!QStandardPaths::findExecutable(u"trayer"_s).isEmpty())
        return {u"trayer"_s, {u"--edge"_s, u"top"_s, u"--align"_s, u"left"_s, u"--tint"_s, u"0"_s}};
    return {u"stalonetray"_s, {u"--geometry"_s, u"4x1+0+0"_s, u"--grow-gravity"_s, u"W"_s}};
}

QMenu *openMenu() { return qobject_cast<QMenu *>(QApplication::activePopupWidget()); }

} // namespace

/// A legacy tray on an X server; nobody watches for status items at first.
class TrayMenuBarExtraTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        const auto [program, arguments] = tray();
        m_tray.start(program, arguments);
        QVERIFY(m_tray.waitForStarted());
        m_extra = MenuBarExtra::create();
        m_extra->setLabel({.dot = StatusDot::Green, .text = u"12,345"_s, .accessibleDescription = {}});
        m_extra->setRows({MenuRow::line(u"📊 Today"_s), MenuRow::button(u"Refresh"_s, [this] { ++m_refreshes; })});
    }

    void cleanup()
    {
        m_extra.reset();
        m_tray.terminate();
        QVERIFY(m_tray.waitForFinished());
    }

    void restingOnItTellsTheFigure()
    {
        QTRY_VERIFY_WITH_TIMEOUT(onScreen(green), 20'000);
        const QPoint place = *onScreen(green);
        QProcess::execute(u"xdotool"_s, {u"mousemove"_s, QString::number(place.x()), QString::number(place.y())});
        QTRY_COMPARE(QToolTip::text(), u"🟢 12,345"_s);
        QProcess::execute(u"xdotool"_s, {u"mousemove"_s, u"300"_s, u"300"_s});
        QTRY_COMPARE(QToolTip::text(), QString());
    }

    void theDotStandsInTheTray()
    {
        QTRY_VERIFY_WITH_TIMEOUT(onScreen(green), 20'000);
        m_extra->setLabel({.dot = StatusDot::Red, .text = u"12,345"_s, .accessibleDescription = {}});
        QTRY_VERIFY(onScreen(red));
        QVERIFY(!onScreen(green));
    }

    void aClickOpensTheMenuBesideTheDot_data()
    {
        QTest::addColumn<int>("button");
        QTest::newRow("left") << 1;
        QTest::newRow("right") << 3;
    }

    void aClickOpensTheMenuBesideTheDot()
    {
        QFETCH(const int, button);
        m_refreshes = 0;
        QTRY_VERIFY_WITH_TIMEOUT(onScreen(green), 20'000);
        const QPoint dot = onScreen(green).value();
        click(dot, button);
        QTRY_VERIFY(openMenu());
        QCOMPARE(openMenu()->actions().size(), 2);
        QTRY_VERIFY(openMenu()->isVisible());
        QVERIFY(QTest::qWaitForWindowExposed(openMenu()));
        QVERIFY(openMenu()->y() > dot.y());
        QCOMPARE(onScreen(green), dot); // nothing covers it
        QTest::mouseClick(
            openMenu(), Qt::LeftButton, {}, openMenu()->actionGeometry(openMenu()->actions()[1]).center());
        QTRY_COMPARE(m_refreshes, 1);
    }

    void aClickSoonAfterAnotherOpensTheMenuAgain()
    {
        QTRY_VERIFY_WITH_TIMEOUT(onScreen(green), 20'000);
        const QPoint dot = onScreen(green).value();
        click(dot);
        QTRY_VERIFY(openMenu());
        openMenu()->close();
        click(dot);
        QTRY_VERIFY(openMenu());
        openMenu()->close();
    }

    void aHostsMenuOpensWhereThePointerIs_data()
    {
        QTest::addColumn<QString>("named");
        QTest::addColumn<QPoint>("place");
        QTest::newRow("near the pointer, as on LXQt") << u"(410, 328)"_s << QPoint(410, 328);
        QTest::newRow("in the applet's own pixels, as on MATE") << u"(5, 28)"_s << QPoint(400, 300);
        QTest::newRow("nowhere") << u"(0, 0)"_s << QPoint(400, 300);
    }

    void aHostsMenuOpensWhereThePointerIs()
    {
        QFETCH(const QString, named);
        StatusHost host;
        host.startWatcher();
        QTRY_VERIFY(host.hasItem());
        QProcess::execute(u"xdotool"_s, {u"mousemove"_s, u"400"_s, u"300"_s});
        host.callItem(u"Activate"_s, named);
        QTRY_VERIFY(openMenu());
        QTEST(openMenu()->pos(), "place");
        openMenu()->close();
    }

    void aHostsMenuStaysClearOfThePanel_data()
    {
        QTest::addColumn<QPoint>("clicked");
        QTest::addColumn<int>("top");
        QTest::newRow("above") << QPoint(400, 10) << 40;
        QTest::newRow("on the left") << QPoint(10, 300) << 300;
        QTest::newRow("on the right") << QPoint(790, 300) << 300;
    }

    void aHostsMenuStaysClearOfThePanel()
    {
        QFETCH(const QPoint, clicked);
        QFETCH(const int, top);
        StatusHost host;
        host.startWatcher();
        QTRY_VERIFY(host.hasItem());
        setWorkArea({60, 40, 700, 500});
        QProcess::execute(u"xdotool"_s, {u"mousemove"_s, QString::number(clicked.x()), QString::number(clicked.y())});
        host.callItem(u"Activate"_s, u"(%1, %2)"_s.arg(clicked.x()).arg(clicked.y()));
        QTRY_VERIFY(openMenu());
        const QRect menu = openMenu()->geometry();
        QCOMPARE(menu.topLeft(), QPoint(std::clamp(clicked.x(), 60, 760 - menu.width()), top));
        openMenu()->close();
        setWorkArea({0, 0, 800, 600});
    }

    void theTrayGivesWayToAStatusAreaAndReturns()
    {
        QTRY_VERIFY_WITH_TIMEOUT(onScreen(green), 20'000);
        StatusHost host;
        host.startWatcher();
        QTRY_VERIFY(host.hasItem());
        QTRY_VERIFY(!onScreen(green));
        host.stopWatcher();
        QTRY_VERIFY_WITH_TIMEOUT(onScreen(green), 20'000);
    }

    void aStatusAreaThatRestartsBringsNoTrayIcon()
    {
        const TrayIconCounter icons;
        StatusHost host;
        host.startWatcher();
        QTRY_VERIFY(host.hasItem());
        for (int restarts = 1; restarts <= 3; ++restarts) {
            host.stopWatcher();
            host.callItem(u"Scroll"_s, u"(1, 'vertical')"_s); // by then the extra knows
            host.startWatcher();
            QTRY_COMPARE(host.registrations().size(), restarts + 1);
        }
        QCOMPARE(icons.count(), 0);
        host.stopWatcher();
        QTRY_COMPARE_WITH_TIMEOUT(icons.count(), 1, 20'000);
    }

private:
    QProcess m_tray;
    std::unique_ptr<MenuBarExtra> m_extra;
    int m_refreshes = 0;
};

int main(int argc, char **argv)
{
    requirePrograms({u"Xvfb"_s, tray().first, u"xdotool"_s, u"xprop"_s});
    requireStatusHost();
    const TestSessionBus bus;
    const TestDisplay display;
    // On Plasma Qt lets menus cover panels.
    qputenv("XDG_CURRENT_DESKTOP", "KDE");
    qputenv("KDE_SESSION_VERSION", "5");
    QGuiApplication::setDesktopSettingsAware(false); // Plasma's plug-in, where it is installed, knows no legacy tray
    const QApplication application(argc, argv);
    TrayMenuBarExtraTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "TrayMenuBarExtraTest.moc"
