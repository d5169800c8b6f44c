// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Look/SystemSymbol.h"
#include "Look/macOS/SymbolPicture.h"
#include "Machine/OnlineWatch.h"
#include "Machine/macOS/Waking.h"
#include "MenuBar/MenuBarExtra.h"
#include "Process/Activation.h"
#include "Process/SingleInstance.h"
#include "StandIn.h"

#include <QImage>
#include <QPainter>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <optional>
#include <unistd.h>

using namespace Qt::StringLiterals;
using AppKit::Mode;

namespace {

QStringList titles()
{
    QStringList titles;
    const auto items = AppKit::menu();
    for (const AppKit::Item &item : items)
        titles << item.title;
    return titles;
}

QList<const void *> identities()
{
    QList<const void *> identities;
    const auto items = AppKit::menu();
    for (const AppKit::Item &item : items)
        identities << item.identity;
    return identities;
}

} // namespace

/// The Objective-C++ that macOS gets, as it is, on a stand-in for AppKit.
class ObjectiveCTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_pool.emplace();
        m_chosen.clear();
        m_extra = MenuBarExtra::create();
    }

    void cleanup()
    {
        AppKit::closeMenu();
        m_extra.reset();
        AppKit::runLoop();
        m_pool.reset();
        QStringList left = AppKit::objects();
        for (const auto *const lasting : {"NSApplication", "NSStatusBar", "NSView", "NSWindow", "NSWorkspace",
                 "NSNotificationCenter", "NSRunningApplication", "NSURL", "Unhiding"})
            left.removeAll(QLatin1String(lasting));
        QCOMPARE(left, QStringList());
        AppKit::requests();
    }

    void theItemShowsTheLabel()
    {
        m_extra->setLabel({.dot = StatusDot::Green, .text = u"1,234"_s, .accessibleDescription = u"All is well."_s});
        QCOMPARE(AppKit::statusItems().size(), 1);
        const AppKit::StatusItem item = AppKit::statusItems().first();
        QCOMPARE(item.title, u"🟢 1,234"_s);
        QCOMPARE(item.accessibilityTitle, u"All is well."_s);
        QCOMPARE(item.autosaveName, u"vantelo"_s); // its place in the bar is kept under this name
        QCOMPARE(item.font, u"steady digits 14"_s);
    }

    void theLabelFollowsTheState()
    {
        m_extra->setLabel({.dot = StatusDot::Green, .text = u"1"_s, .accessibleDescription = u"One."_s});
        m_extra->setLabel({.dot = StatusDot::Red, .text = u"1"_s, .accessibleDescription = u"Stopped."_s});
        QCOMPARE(AppKit::statusItems().first().title, u"🔴 1"_s);
        QCOMPARE(AppKit::statusItems().first().accessibilityTitle, u"Stopped."_s);
    }

    void everyRowBecomesAnItem()
    {
        m_extra->setRows(
            {MenuRow::line(u"Today"_s, MenuRow::Style::Headline), MenuRow::line(u"Updated"_s, MenuRow::Style::Caption),
                MenuRow::divider(), MenuRow::button(u"a_b && c…"_s, [] {}), MenuRow::link(u"Ads"_s, {})});
        const auto items = AppKit::menu();
        QCOMPARE(titles(), QStringList({u"Today"_s, u"Updated"_s, u""_s, u"a_b && c…"_s, u"Ads"_s}));
        QCOMPARE(items[0].font, u"bold 13"_s);
        QCOMPARE(items[1].font, u"menu 11"_s);
        QCOMPARE(items[3].font, u""_s);
        const QList<bool> enabled{items[0].enabled, items[1].enabled, items[3].enabled, items[4].enabled};
        QCOMPARE(enabled, QList<bool>({false, false, true, true}));
        QVERIFY(items[2].separator);
    }

    void anItemTakesTheStyleOfItsRow()
    {
        m_extra->setRows({MenuRow::line(u"Today"_s, MenuRow::Style::Headline)});
        m_extra->setRows({MenuRow::line(u"Today"_s)});
        QCOMPARE(AppKit::menu().first().font, u""_s);
    }

    void aChosenRowDoesWhatItIsFor()
    {
        m_extra->setRows(rows({u"Refresh"_s, u"Quit"_s}));
        AppKit::sendAction(1);
        QCOMPARE(m_chosen, QStringList{u"Quit"_s});
    }

    void anActionMayChangeTheRows()
    {
        m_extra->setRows({MenuRow::button(u"Refresh"_s, [this] {
            m_extra->setRows(rows({u"One"_s, u"Two"_s}));
            m_chosen << u"done"_s;
        })});
        AppKit::sendAction(0);
        QCOMPARE(m_chosen, QStringList{u"done"_s});
        QCOMPARE(titles(), QStringList({u"One"_s, u"Two"_s}));
    }

    void anActionOutlivesItsRow()
    {
        auto held = std::make_shared<int>();
        m_extra->setRows({MenuRow::button(u"Refresh"_s, [this, held] {
            auto &chosen = m_chosen;
            const std::weak_ptr<int> mine = held;
            m_extra->setRows(rows({u"Refreshing"_s})); // the same item
            chosen << (mine.expired() ? u"gone"_s : u"done"_s);
        })});
        held.reset();
        AppKit::sendAction(0);
        QCOMPARE(m_chosen, QStringList{u"done"_s});
    }

    void aLineCannotBeChosen()
    {
        MenuRow line = MenuRow::line(u"Today"_s);
        line.action = [this] { m_chosen << u"line"_s; };
        m_extra->setRows({line});
        AppKit::sendAction(0);
        QCOMPARE(m_chosen, QStringList());
    }

    void anOpenMenuIsRetitled()
    {
        m_extra->setRows(rows({u"$1.00"_s, u"Quit"_s}));
        AppKit::openMenu();
        const auto before = identities();
        m_extra->setRows(rows({u"$2.00"_s, u"Quit"_s}));
        QCOMPARE(titles(), QStringList({u"$2.00"_s, u"Quit"_s}));
        QCOMPARE(identities(), before);
        AppKit::sendAction(0);
        QCOMPARE(m_chosen, QStringList{u"$2.00"_s});
    }

    void aClosedMenuOfTheSameShapeKeepsItsItems()
    {
        m_extra->setRows(rows({u"$1.00"_s}));
        const auto before = identities();
        m_extra->setRows(rows({u"$2.00"_s}));
        QCOMPARE(identities(), before);
    }

    void otherRowsWaitUntilTheMenuIsClosed_data()
    {
        QTest::addColumn<Mode>("mode");
        QTest::newRow("as usual") << Mode::Default;
        QTest::newRow("while an alert is open") << Mode::ModalPanel;
    }

    void otherRowsWaitUntilTheMenuIsClosed()
    {
        QFETCH(const Mode, mode);
        m_extra->setRows(rows({u"Refresh"_s, u"Quit"_s}));
        AppKit::openMenu();
        m_extra->setRows(rows({u"Error"_s, u"Refresh"_s, u"Quit"_s}));
        QCOMPARE(titles(), QStringList({u"Refresh"_s, u"Quit"_s}));
        AppKit::runLoop(Mode::Tracking);
        QCOMPARE(titles(), QStringList({u"Refresh"_s, u"Quit"_s}));
        AppKit::closeMenu();
        AppKit::runLoop(mode);
        QCOMPARE(titles(), QStringList({u"Error"_s, u"Refresh"_s, u"Quit"_s}));
        m_extra->setRows(rows({u"Quit"_s}));
        QCOMPARE(titles(), QStringList{u"Quit"_s}); // nothing waits any more
    }

    void theChosenRowIsTheOneThatWasClicked_data()
    {
        QTest::addColumn<QStringList>("steps");
        QTest::newRow("nothing else") << QStringList{u"close"_s, u"action"_s, u"loop"_s};
        QTest::newRow("action first") << QStringList{u"action"_s, u"close"_s, u"loop"_s};
        QTest::newRow("rows while it is open") << QStringList{u"rows"_s, u"close"_s, u"action"_s, u"loop"_s};
        QTest::newRow("rows, action first") << QStringList{u"rows"_s, u"action"_s, u"close"_s, u"loop"_s};
        QTest::newRow("rows before the action") << QStringList{u"close"_s, u"rows"_s, u"action"_s, u"loop"_s};
        QTest::newRow("rows after the action") << QStringList{u"close"_s, u"action"_s, u"rows"_s, u"loop"_s};
        QTest::newRow("a turn of tracking before the action")
            << QStringList{u"rows"_s, u"close"_s, u"tracking"_s, u"action"_s, u"loop"_s};
        QTest::newRow("rows and a turn of tracking before the action")
            << QStringList{u"close"_s, u"rows"_s, u"tracking"_s, u"action"_s, u"loop"_s};
    }

    void theChosenRowIsTheOneThatWasClicked()
    {
        QFETCH(const QStringList, steps);
        m_extra->setRows(rows({u"Refresh"_s, u"Quit"_s}));
        AppKit::openMenu();
        for (const QString &step : steps) {
            if (step == u"rows"_s)
                m_extra->setRows(rows({u"Error"_s, u"Refresh"_s, u"Quit"_s}));
            else if (step == u"close"_s)
                AppKit::closeMenu();
            else if (step == u"action"_s)
                AppKit::sendAction(1);
            else
                AppKit::runLoop(step == u"loop"_s ? Mode::Default : Mode::Tracking);
        }
        QCOMPARE(m_chosen, QStringList{u"Quit"_s});
        QCOMPARE(titles().first(), steps.contains(u"rows"_s) ? u"Error"_s : u"Refresh"_s);
    }

    void aMenuThatIsOpenAgainKeepsItsRows()
    {
        m_extra->setRows(rows({u"Quit"_s}));
        AppKit::openMenu();
        m_extra->setRows(rows({u"Error"_s, u"Quit"_s}));
        AppKit::closeMenu();
        AppKit::openMenu();
        AppKit::runLoop(Mode::Tracking);
        QCOMPARE(titles(), QStringList{u"Quit"_s});
        AppKit::closeMenu();
        AppKit::runLoop();
        QCOMPARE(titles(), QStringList({u"Error"_s, u"Quit"_s}));
    }

    void theProgramCanCloseTheMenu()
    {
        m_extra->setRows(rows({u"Quit"_s}));
        AppKit::openMenu();
        m_extra->closeMenu();
        QVERIFY(!AppKit::isMenuOpen());
        m_extra->closeMenu(); // and is allowed to where it is closed
    }

    void atTheEndTheItemLeavesTheBar()
    {
        m_extra.reset();
        QCOMPARE(AppKit::statusItems().size(), 0);
    }

    void theEndMayComeWhileRowsWait()
    {
        m_extra->setRows(rows({u"Quit"_s}));
        AppKit::openMenu();
        m_extra->setRows(rows({u"Error"_s, u"Quit"_s}));
        AppKit::closeMenu();
        m_extra.reset();
        AppKit::runLoop();
        QCOMPARE(AppKit::statusItems().size(), 0);
    }

    void theSystemMayNotPutThePollsOff()
    {
        QCOMPARE(AppKit::activities(), QStringList{u"Watching an ad account"_s});
        m_extra.reset();
        QCOMPARE(AppKit::activities(), QStringList());
    }

    void openingTheProgramAgainActivatesIt()
    {
        const QTemporaryDir home;
        qputenv("XDG_DATA_HOME", QFile::encodeName(home.path()));
        auto instance = SingleInstance::claim();
        QVERIFY(instance);
        QVERIFY(!AppKit::reopen()); // the system's own handler would take a place taken this early
        AppKit::finishLaunching();
        AppKit::reopen(); // nobody to tell yet
        int activations = 0;
        instance->onActivation([&] { ++activations; });
        AppKit::reopen();
        QCOMPARE(activations, 1);
        instance.reset();
        QVERIFY(!AppKit::reopen());
        AppKit::finishLaunching();
        QVERIFY(!AppKit::reopen());
    }

    void aSecondProcessOpensTheBundleOfTheFirst()
    {
        const QTemporaryDir home;
        qputenv("XDG_DATA_HOME", QFile::encodeName(home.path()));
        AppKit::setRunning(::getpid(), u"/Applications/Vantelo.app"_s);
        auto first = SingleInstance::claim();
        QVERIFY(first);
        QCOMPARE(AppKit::requests(), QStringList());
        QVERIFY(!SingleInstance::claim());
        QCOMPARE(AppKit::requests(), QStringList{u"open file:///Applications/Vantelo.app"_s});
        first.reset();
        QVERIFY(SingleInstance::claim());
    }

    void aFirstProcessOfNoBundleIsLeftAlone()
    {
        const QTemporaryDir home;
        qputenv("XDG_DATA_HOME", QFile::encodeName(home.path()));
        AppKit::setRunning(::getpid(), {});
        const auto first = SingleInstance::claim();
        QVERIFY(!SingleInstance::claim());
        QCOMPARE(AppKit::requests(), QStringList());
    }

    void aWindowComesToTheFrontWithItsProgram()
    {
        activateIgnoringOtherApps(AppKit::view());
        QCOMPARE(AppKit::requests(), QStringList({u"activate"_s, u"front"_s}));
    }

    void givingTheFocusBackLeavesNothingHidden()
    {
        giveFocusBack();
        QCOMPARE(AppKit::requests(), QStringList{u"hide"_s});
        AppKit::finishHiding();
        QCOMPARE(AppKit::requests(), QStringList{u"unhide"_s});
        AppKit::finishHiding(); // the user has hidden it
        QCOMPARE(AppKit::requests(), QStringList());
    }

    void wakingIsHeardWhileSomebodyListens()
    {
        int times = 0;
        auto listening = onWaking([&] { ++times; });
        AppKit::wake();
        AppKit::wake();
        QCOMPARE(times, 2);
        listening.reset();
        AppKit::wake();
        QCOMPARE(times, 2);
    }

    void theMachineIsOnlineOnceTheSystemSaysSo()
    {
        auto watch = OnlineWatch::create();
        const QSignalSpy online(watch.get(), &OnlineWatch::online);
        AppKit::tellPath(false);
        QCOMPARE(AppKit::serveMainQueue(), 1);
        QCOMPARE(online.count(), 0);
        AppKit::tellPath(true);
        QCOMPARE(online.count(), 0);
        AppKit::serveMainQueue();
        QCOMPARE(online.count(), 1);
        watch.reset();
        QCOMPARE(AppKit::pathMonitors(), 0);
    }

    void theSystemMayTellOfTheNetworkWhenNobodyWaitsForItAnyMore()
    {
        auto watch = OnlineWatch::create();
        AppKit::tellPath(true);
        watch.reset();
        QCOMPARE(AppKit::serveMainQueue(), 0);
    }

    void aSymbolIsDrawnInItsTintAndNothingElse()
    {
        QImage image(40, 40, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        const auto hints = painter.renderHints();
        SystemSymbol::paint(painter, u"checkmark.circle.fill"_s, QRectF(4, 4, 32, 32), Qt::red);
        QCOMPARE(painter.renderHints(), hints);
        painter.end();
        // The stand-in's symbol fills its own 20 to 16.
        QCOMPARE(AppKit::symbolPlace(), QRectF(0, 3.2, 32, 25.6));
        QCOMPARE(image.pixelColor(20, 20), QColor(Qt::red));
        QCOMPARE(image.pixelColor(20, 5), QColor(Qt::white));
        QCOMPARE(image.pixelColor(20, 34), QColor(Qt::white));
    }

    void aSymbolIsSharpOnAFineScreen()
    {
        QImage image(80, 80, QImage::Format_RGB32);
        image.setDevicePixelRatio(2.0);
        QPainter painter(&image);
        SystemSymbol::paint(painter, u"checkmark.circle.fill"_s, QRectF(4, 4, 32, 32), Qt::red);
        QCOMPARE(AppKit::symbolPlace(), QRectF(0, 6.4, 64, 51.2));
    }

    void aPictureOutlivesTheBitmapItWasDrawnInto()
    {
        QImage image;
        {
            const AppKit::Pool pool;
            image = symbolPicture(u"checkmark.circle.fill"_s, 32);
        }
        QCOMPARE(image.pixelColor(16, 16), QColor(Qt::black));
        QCOMPARE(image.pixelColor(16, 1), QColor(Qt::transparent));
        QVERIFY(symbolPicture(u"no.such.symbol"_s, 32).isNull());
    }

private:
    MenuRows rows(const QStringList &texts)
    {
        MenuRows rows;
        for (const QString &text : texts)
            rows.push_back(MenuRow::button(text, [this, text] { m_chosen << text; }));
        return rows;
    }

    std::optional<AppKit::Pool> m_pool;
    std::unique_ptr<MenuBarExtra> m_extra;
    QStringList m_chosen;
};

QTEST_GUILESS_MAIN(ObjectiveCTest)
#include "ObjectiveCTest.moc"
