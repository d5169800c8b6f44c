// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "App/VanteloApp.h"
#include "Foundation/Task.h"
#include "Json.h"
#include "LoopbackService.h"
#include "State/AppState.h"
#include "TestClock.h"
#include "TestPreferences.h"

#include <QApplication>
#include <QTest>

#include <functional>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;
using Reply = LoopbackService::Reply;

namespace {

/// What a menu-bar extra was last told, and how often.
struct Drawing {
    MenuBarLabel label;
    MenuRows rows;
    QStringList labels; ///< one after the other
    int redraws = 0;
    bool menuClosed = false;

    QStringList texts() const
    {
        QStringList texts;
        for (const MenuRow &row : rows)
            texts << row.text;
        return texts;
    }
};

class RecordingExtra : public MenuBarExtra {
public:
    explicit RecordingExtra(Drawing &drawing) : m_drawing(drawing) {}

    void setLabel(const MenuBarLabel &label) override
    {
        m_drawing.label = label;
        if (!m_drawing.labels.endsWith(label.whole()))
            m_drawing.labels << label.whole();
        ++m_drawing.redraws;
    }
    void setRows(const MenuRows &rows) override { m_drawing.rows = rows; }
    void closeMenu() override { m_drawing.menuClosed = true; }

private:
    Drawing &m_drawing;
};

/// Somebody starts the program a second time just as it ends.
class ExtraThatIsCalledAtTheEnd : public RecordingExtra {
public:
    ExtraThatIsCalledAtTheEnd(Drawing &drawing, std::function<void()> call)
        : RecordingExtra(drawing), m_call(std::move(call))
    {
    }
    ~ExtraThatIsCalledAtTheEnd() override { m_call(); }
    Q_DISABLE_COPY_MOVE(ExtraThatIsCalledAtTheEnd)

private:
    std::function<void()> m_call;
};

} // namespace

class VanteloAppTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_drawing = {};
        m_preferences = std::make_unique<TestPreferences>();
        m_service = std::make_unique<LoopbackService>();
    }

    void cleanup()
    {
        m_app.reset();
        m_service.reset();
        m_preferences.reset();
    }

    void atOnceTheLabelSaysSetup()
    {
        giveCredentials();
        launch();
        QCOMPARE(m_drawing.label.whole(), u"⚪ Setup"_s);
        QVERIFY(m_drawing.texts().contains(u"⚪ No credentials configured"_s));
    }

    void aHealthyAccountIsGreenWithItsImpressions()
    {
        giveCredentials();
        serve("12345");
        launch();
        QTRY_COMPARE(m_drawing.label.whole(), u"🟢 12,345"_s);
        QCOMPARE(m_drawing.label.accessibleDescription, u"The ad account is delivering: 12,345 impressions today."_s);
        QVERIFY(m_drawing.texts().contains(u"📊 Today"_s));
    }

    void aStaleAccountIsRedWithItsImpressions()
    {
        giveCredentials();
        m_preferences->write(u"lastImpressions"_s, 12345);
        m_preferences->write(u"lastChangeTimestamp"_s, secondsSince1970() - 3600);
        serve("12345");
        launch();
        QTRY_COMPARE(m_drawing.label.whole(), u"🔴 12,345"_s);
        QCOMPARE(m_drawing.label.accessibleDescription,
            u"The ad account has stopped delivering: 12,345 impressions today."_s);
    }

    void anErrorIsWhite_data()
    {
        QTest::addColumn<QByteArray>("message");
        QTest::newRow("with a message") << "Token expired"_ba;
        QTest::newRow("with an empty message") << ""_ba;
    }

    void anErrorIsWhite()
    {
        QFETCH(const QByteArray, message);
        giveCredentials();
        m_service->answerAll(Reply::whole(json("{'error': {'message': '") + message + json("'}}"), 400));
        launch();
        QTRY_COMPARE(m_drawing.label.whole(), u"⚪ ERR"_s);
        QCOMPARE(m_drawing.label.accessibleDescription, u"The ad account could not be read."_s);
        QCOMPARE(m_drawing.rows.at(1).text, QString::fromUtf8(message));
    }

    void withoutCredentialsTheLabelStaysAtSetup()
    {
        launch();
        QTRY_COMPARE(Task::running(), 0);
        QCOMPARE(m_drawing.label.whole(), u"⚪ Setup"_s);
        QCOMPARE(m_drawing.label.accessibleDescription, u"No credentials configured."_s);
    }

    void credentialsTakenAwayBringTheLabelBackToSetup()
    {
        giveCredentials();
        serve("1");
        launch();
        QTRY_COMPARE(m_drawing.label.whole(), u"🟢 1"_s);
        QTRY_COMPARE(Task::running(), 0);
        QCoreApplication::processEvents();
        m_preferences->write(u"accessToken"_s, u""_s); // by another program, so that nobody tells
        choose(u"🔄 Refresh"_s);
        QTRY_COMPARE(m_drawing.label.whole(), u"⚪ Setup"_s);
        QCOMPARE(m_drawing.texts().value(0), u"⚪ No credentials configured"_s);
    }

    void theCountStaysWhileARefreshIsOut()
    {
        giveCredentials();
        serve("1");
        launch();
        QTRY_COMPARE(m_drawing.label.whole(), u"🟢 1"_s);
        QTRY_COMPARE(Task::running(), 0);
        serve("2");
        choose(u"🔄 Refresh"_s);
        QTRY_COMPARE(m_drawing.label.whole(), u"🟢 2"_s);
        QCOMPARE(m_drawing.labels, QStringList({u"⚪ Setup"_s, u"🟢 1"_s, u"🟢 2"_s}));
    }

    void aRefreshIsDrawnOncePerTurnOfTheEventLoop()
    {
        giveCredentials();
        serve("1");
        launch();
        QTRY_COMPARE(m_drawing.label.whole(), u"🟢 1"_s);
        QTRY_COMPARE(Task::running(), 0);
        QCoreApplication::processEvents();
        // One for the launch, one for the loading flag, one for today's figures, one for the seven days', though
        // the state announced twice as many changes.
        QVERIFY2(m_drawing.redraws <= 4, qPrintable(QString::number(m_drawing.redraws)));
    }

    void theEndClosesAnOpenMenu()
    {
        launch();
        m_app->quit();
        QVERIFY(m_drawing.menuClosed);
    }

    void theEndDismissesAnOpenAlert()
    {
        m_service->answerAll(Reply::whole(json("{'version': '99', 'download_url': 'x'}")));
        launch();
        QTRY_VERIFY(QApplication::activeModalWidget());
        m_app.reset();
        QCOMPARE(Task::running(), 0);
    }

    void theEndDrawsNothingMore()
    {
        giveCredentials();
        m_service->answer([](const LoopbackService::Request &request) {
            return request.target == "/version.json" ? Reply::whole(json("{'version': '99', 'download_url': 'x'}"))
                                                     : Reply::whole("{}");
        });
        launch();
        QTRY_VERIFY(QApplication::activeModalWidget());
        m_service->answerAll(Reply::silence());
        const qsizetype requests = m_service->requests().size();
        choose(u"🔄 Refresh"_s);
        QTRY_COMPARE(m_service->requests().size(), requests + 1);
        const int redraws = m_drawing.redraws;
        m_drawing.rows.clear(); // they hold the state
        // The aborted request changes the state while the alert still has to end.
        m_app.reset();
        QCOMPARE(m_drawing.redraws, redraws);
    }

    void theEnglishTextsRunFromLeftToRight()
    {
        QApplication::setLayoutDirection(Qt::RightToLeft); // as Qt's own translations into Arabic or Hebrew ask for
        launch();
        QCOMPARE(QApplication::layoutDirection(), Qt::LeftToRight);
    }

    void theEndOpensNoWindow()
    {
        VanteloApp *app = nullptr;
        qsizetype windows = -1;
        auto extra = std::make_unique<ExtraThatIsCalledAtTheEnd>(m_drawing, [&] {
            app->openSettings();
            windows = QApplication::topLevelWidgets().size();
        });
        m_app = std::make_unique<VanteloApp>(std::move(extra));
        app = m_app.get();
        m_app.reset();
        QCOMPARE(windows, 0);
    }

    void theEndAbortsWhatIsUnderWay()
    {
        giveCredentials();
        m_service->answerAll(Reply::silence());
        launch();
        QTRY_COMPARE(m_service->requests().size(), 1);
        m_app.reset();
        QCOMPARE(Task::running(), 0);
    }

private:
    void launch() { m_app = std::make_unique<VanteloApp>(std::make_unique<RecordingExtra>(m_drawing)); }

    void choose(const QString &text) const
    {
        const MenuRows rows = m_drawing.rows; // the action may change them
        for (const MenuRow &row : rows) {
            if (row.text == text)
                row.action();
        }
    }

    void giveCredentials()
    {
        m_preferences->write(u"accessToken"_s, u"T"_s);
        m_preferences->write(u"adAccountId"_s, u"1"_s);
    }

    void serve(const QByteArray &impressions)
    {
        m_service->answerInsights(json("{'data': [{'impressions': '") + impressions + json("'}]}"), "{}");
    }

    Drawing m_drawing;
    std::unique_ptr<TestPreferences> m_preferences;
    std::unique_ptr<LoopbackService> m_service;
    std::unique_ptr<VanteloApp> m_app;
};

QTEST_MAIN(VanteloAppTest)
#include "VanteloAppTest.moc"
