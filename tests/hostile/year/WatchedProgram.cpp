// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

// The program's own state, client and preference store, moved by commands on standard input: one JSON object a
// line, such as {"at": 1767225600, "do": "refresh"}. Once all that a command set off has ended, one line of JSON on
// standard output tells how the program stands. The service's origin is the only argument.

#include "App/VanteloApp.h"
#include "Controls/Windows/Alert.h"
#include "Foundation/Task.h"
#include "Preferences/Linux/PreferenceFile.h"
#include "State/AppState.h"
#include "TestClock.h"
#include "TestDeployment.h"
#include "TestMachine.h"
#include "TimeGate.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QDialog>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSocketNotifier>

#include <csignal>
#include <cstdio>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

/// Every digit counts, and JSON knows no infinity.
QString exact(double number) { return QString::number(number, 'g', 17); }
QString exact(std::int64_t number) { return QString::number(number); }

QString milliseconds(const std::optional<QDateTime> &time)
{
    return time ? QString::number(time->toMSecsSinceEpoch()) : QString();
}

QJsonArray figures(const TodayStats &today)
{
    return {exact(today.impressions), exact(today.spend), exact(today.linkClicks), exact(today.cpc)};
}

QJsonArray figures(const SevenDayStats &week)
{
    return {exact(week.spend), exact(week.impressions), exact(week.frequency), exact(week.reach), exact(week.cpc),
        exact(week.ctr), exact(week.conversions)};
}

QString nameOf(const MonitorStatus &status)
{
    return status.match([](const MonitorStatus::Error &error) { return u"error: "_s + error.message; },
        [](MonitorStatus::Ok) { return u"ok"_s; }, [](MonitorStatus::Stale) { return u"stale"_s; },
        [](MonitorStatus::NoConfig) { return u"noConfig"_s; });
}

/// The preferences as the program knows them.
const PreferenceStorage *memory = nullptr;

class Watched : public QObject {
    Q_OBJECT

public:
    Watched()
    {
        connect(&m_commands, &QSocketNotifier::activated, this, &Watched::receive);
        connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this, &Watched::settle);
        qApp->installEventFilter(this);
    }

    /// Notes every alert and closes it, as a user would.
    bool eventFilter(QObject *object, QEvent *event) override
    {
        if (const auto *box = qobject_cast<QDialog *>(object); box && event->type() == QEvent::Show) {
            m_alerts << box->accessibleName();
            QMetaObject::invokeMethod(this, &Alert::dismissAll, Qt::QueuedConnection);
        }
        return false;
    }

private:
    void receive()
    {
        QByteArray bytes(4096, Qt::Uninitialized);
        const auto count = ::read(STDIN_FILENO, bytes.data(), static_cast<std::size_t>(bytes.size()));
        if (count <= 0) {
            QCoreApplication::exit();
            return;
        }
        m_received += bytes.first(static_cast<qsizetype>(count));
        for (qsizetype end = m_received.indexOf('\n'); end >= 0; end = m_received.indexOf('\n')) {
            obey(QJsonDocument::fromJson(m_received.first(end)).object());
            m_received.remove(0, end + 1);
        }
    }

    void obey(const QJsonObject &command)
    {
        TestClock::set(command.value("at"_L1).toDouble());
        const QString what = command.value("do"_L1).toString();
        const QString value = command.value("value"_L1).toString();
        const std::chrono::milliseconds time(command.value("milliseconds"_L1).toInteger());
        m_changesToLive = command.value("changesToLive"_L1).toInt();
        m_owed = m_owed || !command.value("quiet"_L1).toBool();
        if (what == "launch"_L1)
            launch();
        else if (what == "pass"_L1)
            TestMachine::pass(time);
        else if (what == "sleep"_L1)
            TestMachine::sleep(time);
        else if (what == "online"_L1)
            TestMachine::setOnline(true);
        else if (what == "offline"_L1)
            TestMachine::setOnline(false);
        else if (what == "move"_L1)
            TestMachine::changeNetwork();
        else if (what == "time out"_L1)
            m_gate.letTransferTimeOut();
        else if (what == "refresh"_L1)
            Task::start(m_state->refresh());
        else if (what == "test"_L1)
            Task::start(testConnection());
        else if (what == "accessToken"_L1)
            m_state->setAccessToken(value);
        else if (what == "adAccountId"_L1)
            m_state->setAdAccountId(value);
        else if (what == "staleThresholdMinutes"_L1)
            m_state->setStaleThresholdMinutes(value.toLongLong());
        else
            qFatal("an unknown command: %s", qPrintable(what));
    }

    void launch()
    {
        m_state = AppState::create();
        connect(m_state.get(), &AppState::objectWillChange, this, &Watched::dieIfDue);
        report(); // how the program stands before its first refresh
        // The start-up begins on the next turn of the event loop.
        m_owed = false;
        QMetaObject::invokeMethod(
            this, [this] { m_owed = true; }, Qt::QueuedConnection);
    }

    /// Every write to the state or to a preference is announced, so a death can strike between any two.
    void dieIfDue()
    {
        if (m_changesToLive == 1)
            ::raise(SIGKILL);
        --m_changesToLive;
    }

    QCoro::Task<> testConnection()
    {
        const auto message = co_await m_state->testConnection();
        m_testResult = message.value_or(u"success"_s);
    }

    /// Reports once nothing is under way any more, behind everything that is queued by then.
    void settle()
    {
        const bool pollIsNear = TestMachine::isOnline() && TestMachine::isWaitedFor();
        if (!m_owed || pollIsNear || Task::running() > 0)
            return;
        m_owed = false;
        QMetaObject::invokeMethod(this, &Watched::report, Qt::QueuedConnection);
    }

    void report()
    {
        const QJsonObject line{
            {u"status"_s, nameOf(m_state->status())},
            {u"label"_s, VanteloApp::label(*m_state).whole()},
            {u"today"_s, figures(m_state->today())},
            {u"sevenDay"_s, figures(m_state->sevenDay())},
            {u"isLoading"_s, m_state->isLoading()},
            {u"lastRefresh"_s, milliseconds(m_state->lastRefresh())},
            {u"lastImpressions"_s, remembered(u"lastImpressions"_s)},
            {u"lastChangeTimestamp"_s, remembered(u"lastChangeTimestamp"_s)},
            {u"test"_s, m_testResult},
            {u"alerts"_s, QJsonArray::fromStringList(m_alerts)},
        };
        m_testResult.clear();
        m_alerts.clear();
        std::puts(QJsonDocument(line).toJson(QJsonDocument::Compact).constData());
        std::fflush(stdout);
    }

    /// As the program last saw or left it. Does not ask the disk, so looking changes nothing.
    static QJsonValue remembered(const QString &key)
    {
        const QVariant value = memory->value(key);
        return value.isValid() ? QJsonValue(value.toString()) : QJsonValue();
    }

    TimeGate m_gate;
    QSocketNotifier m_commands{STDIN_FILENO, QSocketNotifier::Read};
    QByteArray m_received;
    std::shared_ptr<AppState> m_state;
    QString m_testResult;
    QStringList m_alerts;
    int m_changesToLive = 0; ///< positive where a death is due
    bool m_owed = false;     ///< a report is to follow
};

} // namespace

std::unique_ptr<PreferenceStorage> PreferenceStorage::open()
{
    auto file =
        std::make_unique<PreferenceFile>(qEnvironmentVariable("XDG_CONFIG_HOME") + u"/Vantelo/Vantelo Test.conf"_s);
    memory = file.get();
    return file;
}

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    QApplication::setApplicationVersion(u"1.0.0"_s);
    QApplication::setQuitOnLastWindowClosed(false);
    TestDeployment::setOrigin(QString::fromLocal8Bit(argv[argc - 1]));
    const Watched watched;
    return QApplication::exec();
}

#include "WatchedProgram.moc"
