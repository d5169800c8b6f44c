// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Update/UpdateManager.h"
#include "Controls/Windows/Alert.h"
#include "Foundation/Task.h"
#include "Http/HttpSession.h"
#include "Json.h"
#include "LoopbackService.h"
#include "OutputCapture.h"
#include "TestDeployment.h"

#include <QAccessible>
#include <QApplication>
#include <QDesktopServices>
#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QRegularExpression>
#include <QStyle>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using Reply = LoopbackService::Reply;

namespace {

// Whatever the system would open; an address without a scheme goes under the empty one.
const QStringList openable{u"https"_s, u"http"_s, u"file"_s, u"javascript"_s, u"mailto"_s, u"ftp"_s, QString(u""_s)};
const QString downloadAddress = u"https://vantelo.example/download"_s;

QList<QDialog *> openAlerts()
{
    QList<QDialog *> alerts;
    const auto widgets = QApplication::topLevelWidgets();
    for (QWidget *widget : widgets) {
        auto *const alert = qobject_cast<QDialog *>(widget);
        if (alert && alert->isVisible())
            alerts << alert;
    }
    return alerts;
}

/// What a screen reader says of the alert.
QString spoken(QDialog *alert, QAccessible::Text kind)
{
    return QAccessible::queryAccessibleInterface(alert)->text(kind);
}

QString messageText(QDialog *alert) { return spoken(alert, QAccessible::Name); }

QString informativeText(QDialog *alert) { return spoken(alert, QAccessible::Description); }

QStringList buttonTexts(const QDialog *alert)
{
    QStringList texts;
    const auto buttons = alert->findChildren<QPushButton *>();
    for (const QPushButton *button : buttons)
        texts << button->text();
    return texts;
}

bool showsIcon(const QDialog *alert, QStyle::StandardPixmap icon)
{
    const QPixmap wanted = QApplication::style()->standardIcon(icon).pixmap(
        QApplication::style()->pixelMetric(QStyle::PM_MessageBoxIconSize));
    const auto labels = alert->findChildren<QLabel *>();
    return std::any_of(labels.begin(), labels.end(),
        [&](const QLabel *label) { return label->pixmap(Qt::ReturnByValue).toImage() == wanted.toImage(); });
}

QByteArray feed(const QByteArray &version)
{
    return json("{'version': '") + version + json("', 'download_url': '") + downloadAddress.toUtf8() + json("'}");
}

} // namespace

class UpdateManagerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QApplication::setApplicationVersion(u"1.2.0"_s);
        for (const QString &scheme : openable)
            QDesktopServices::setUrlHandler(scheme, this, "open");
    }

    void cleanupTestCase()
    {
        for (const QString &scheme : openable)
            QDesktopServices::unsetUrlHandler(scheme);
    }

    void init()
    {
        m_opened.clear();
        m_service = std::make_unique<LoopbackService>();
    }

    void cleanup()
    {
        Alert::dismissAll();
        QTRY_COMPARE(Task::running(), 0);
        m_service.reset();
        QApplication::setApplicationVersion(u"1.2.0"_s);
    }

    void theFeedIsFetchedFromItsAddress()
    {
        check(true);
        QTRY_COMPARE(m_service->requests().size(), 1);
        QCOMPARE(m_service->requests().constFirst().target, "/version.json"_ba);
    }

    void aNewerReleaseIsAnnouncedInBothModes_data()
    {
        QTest::addColumn<bool>("silent");
        QTest::newRow("silent") << true;
        QTest::newRow("manual") << false;
    }

    void aNewerReleaseIsAnnouncedInBothModes()
    {
        QFETCH(const bool, silent);
        serve(feed("1.3.0"));
        check(silent);
        QDialog *const alert = awaitAlert();
        QCOMPARE(messageText(alert), u"New Update Available"_s);
        // Without release notes the two line breaks stay.
        QCOMPARE(informativeText(alert), u"Version 1.3.0 is now available. Would you like to download it now?\n\n"_s);
        QVERIFY(showsIcon(alert, QStyle::SP_MessageBoxInformation));
        QCOMPARE(buttonTexts(alert), QStringList({u"Download Now"_s, u"Later"_s}));
    }

    void releaseNotesFollowTheQuestion()
    {
        serve(json("{'version': '9', 'download_url': 'x', 'release_notes': 'Fixes & <b>more</b>'}"));
        check(false);
        QDialog *const alert = awaitAlert();
        QCOMPARE(informativeText(alert),
            u"Version 9 is now available. Would you like to download it now?\n\nFixes & <b>more</b>"_s);
    }

    void alertsAreApplicationModal()
    {
        serve(feed("1.3.0"));
        check(false);
        QCOMPARE(awaitAlert()->windowModality(), Qt::ApplicationModal);
    }

    void anAlertKeepsToItsPlaceAmongTheWindows()
    {
        QTest::failOnWarning(QRegularExpression(u"raise"_s)); // which is what this platform says of the attempt
        serve(feed("1.3.0"));
        check(true);
        QVERIFY(QTest::qWaitForWindowExposed(awaitAlert()));
    }

    void downloadNowOpensTheAddress()
    {
        serve(feed("1.3.0"));
        check(false);
        press(u"Download Now"_s);
        QTRY_COMPARE(m_opened, QList<QUrl>({QUrl(downloadAddress)}));
    }

    void anyWebAddressIsOpened_data()
    {
        QTest::addColumn<QByteArray>("address");
        QTest::newRow("without TLS") << "http://vantelo.example/"_ba;
        QTest::newRow("a scheme in upper case") << "HTTPS://vantelo.example/Download"_ba;
        QTest::newRow("a port and a query") << "https://vantelo.example:8443/?for=linux#top"_ba;
    }

    void anyWebAddressIsOpened()
    {
        QFETCH(const QByteArray, address);
        serve(json("{'version': '9', 'download_url': '") + address + json("'}"));
        check(false);
        press(u"Download Now"_s);
        QTRY_COMPARE(m_opened, QList<QUrl>({QUrl(QString::fromLatin1(address))}));
    }

    void downloadNowLeavesTheFetchingToTheBrowser()
    {
        const QString address = m_service->origin() + u"/download"_s;
        serve(json("{'version': '9', 'download_url': '") + address.toUtf8() + json("'}"));
        check(false);
        press(u"Download Now"_s);
        QTRY_COMPARE(m_opened, QList<QUrl>({QUrl(address)}));
        check(true); // whatever had been sent before has arrived by then
        QTRY_COMPARE(m_service->requestsWith("/version.json"), 2);
        QCOMPARE(m_service->requestsWith("/download"), 0);
    }

    void downloadNowIsTheDefault()
    {
        serve(feed("1.3.0"));
        check(false);
        QTest::keyClick(awaitAlert(), Qt::Key_Return);
        QTRY_COMPARE(m_opened.size(), 1);
    }

    void laterOpensNothing()
    {
        serve(feed("1.3.0"));
        check(false);
        press(u"Later"_s);
        QTRY_COMPARE(Task::running(), 0);
        QVERIFY(m_opened.isEmpty());
    }

    void closingTheAlertOpensNothing_data()
    {
        QTest::addColumn<bool>("byEscape");
        QTest::newRow("by Escape") << true;
        QTest::newRow("by the window's button") << false;
    }

    void closingTheAlertOpensNothing()
    {
        QFETCH(const bool, byEscape);
        serve(feed("1.3.0"));
        check(false);
        QDialog *const alert = awaitAlert();
        if (byEscape)
            QTest::keyClick(alert, Qt::Key_Escape);
        else
            alert->close();
        QTRY_COMPARE(Task::running(), 0);
        QVERIFY(m_opened.isEmpty());
    }

    void anInvalidDownloadAddressDoesNothing_data()
    {
        QTest::addColumn<QByteArray>("address");
        QTest::newRow("no address at all") << "https://not a url/"_ba;
        QTest::newRow("a blank that nobody encoded") << "https://vantelo.example/a b"_ba;
        QTest::newRow("nothing") << ""_ba;
        QTest::newRow("an option to the opener") << "--help"_ba;
        QTest::newRow("a file") << "/etc/passwd"_ba;
        QTest::newRow("a file's address") << "file:///etc/passwd"_ba;
        QTest::newRow("a file's address with a host") << "file://vantelo.example/etc/passwd"_ba;
        QTest::newRow("a script") << "javascript:alert(1)"_ba;
        QTest::newRow("a mail") << "mailto:someone@vantelo.example"_ba;
        QTest::newRow("another protocol") << "ftp://vantelo.example/download"_ba;
        QTest::newRow("no host") << "https:///download"_ba;
        QTest::newRow("no host, nor slashes") << "https:download"_ba;
        QTest::newRow("no scheme") << "//vantelo.example/download"_ba;
        QTest::newRow("relative") << "vantelo.example/download"_ba;
    }

    void anInvalidDownloadAddressDoesNothing()
    {
        QFETCH(const QByteArray, address);
        serve(json("{'version': '9', 'download_url': '") + address + json("'}"));
        check(false);
        press(u"Download Now"_s);
        QTRY_COMPARE(Task::running(), 0);
        QVERIFY(m_opened.isEmpty());
    }

    void anUpToDateProgramSaysSoWhenAsked()
    {
        serve(feed("1.2.0"));
        check(false);
        QDialog *const alert = awaitAlert();
        QCOMPARE(messageText(alert), u"You're Up to Date"_s);
        QCOMPARE(informativeText(alert), u"You are currently running the latest version of Vantelo."_s);
        QVERIFY(showsIcon(alert, QStyle::SP_MessageBoxInformation));
        QCOMPARE(buttonTexts(alert), QStringList({u"OK"_s}));
    }

    void anUpToDateProgramIsSilentAtStartUp()
    {
        serve(feed("1.2.0"));
        OutputCapture output;
        check(true);
        QTRY_COMPARE(Task::running(), 0);
        QVERIFY(openAlerts().isEmpty());
        QCOMPARE(output.diagnostics(), QByteArray());
    }

    void aFailureIsLoggedAndShownWhenAsked()
    {
        m_service->answerAll(Reply::reset());
        OutputCapture output;
        check(false);
        QDialog *const alert = awaitAlert();
        QCOMPARE(messageText(alert), u"Update Check Failed"_s);
        QCOMPARE(informativeText(alert), u"Could not check for updates: The connection was lost."_s);
        QVERIFY(showsIcon(alert, QStyle::SP_MessageBoxWarning));
        QCOMPARE(buttonTexts(alert), QStringList({u"OK"_s}));
        QCOMPARE(output.diagnostics(), "Vantelo: Failed to check for updates - The connection was lost.\n"_ba);
    }

    void aFailureAtStartUpIsOneLineAndNoAlert()
    {
        m_service->answerAll(Reply::reset());
        OutputCapture output;
        check(true);
        QTRY_COMPARE(Task::running(), 0);
        QVERIFY(openAlerts().isEmpty());
        QCOMPARE(output.diagnostics(), "Vantelo: Failed to check for updates - The connection was lost.\n"_ba);
    }

    void whatDoesNotDecodeSaysWhy_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QString>("description");
        const QString format = u"The data couldn’t be read because it isn’t in the correct format."_s;
        const QString missing = u"The data couldn’t be read because it is missing."_s;
        QTest::newRow("HTML") << "<html>404</html>"_ba << format;
        QTest::newRow("no version") << json("{'download_url': 'x'}") << missing;
        QTest::newRow("no address") << json("{'version': '9'}") << missing;
        QTest::newRow("a number for the version") << json("{'version': 9, 'download_url': 'x'}") << format;
    }

    void whatDoesNotDecodeSaysWhy()
    {
        QFETCH(const QByteArray, body);
        QFETCH(const QString, description);
        serve(body);
        check(false);
        QCOMPARE(informativeText(awaitAlert()), u"Could not check for updates: "_s + description);
    }

    void theStatusOfTheFeedNeverDecides()
    {
        m_service->answerAll(Reply::whole(feed("1.3.0"), 404));
        check(true);
        QCOMPARE(messageText(awaitAlert()), u"New Update Available"_s);
    }

    void aProgramWithoutVersionCountsAsZero()
    {
        QApplication::setApplicationVersion(QString());
        serve(feed("0.0.1"));
        check(true);
        QCOMPARE(messageText(awaitAlert()), u"New Update Available"_s);
    }

    void overlappingChecksShowTheirOwnAlerts()
    {
        serve(feed("1.3.0"));
        check(true);
        check(false);
        QTRY_COMPARE(openAlerts().size(), 2);
        QCOMPARE(m_service->requests().size(), 2);
    }

    void anAlertAnsweredAMomentAgoIsNotDismissed()
    {
        serve(feed("1.3.0"));
        check(false);
        press(u"Download Now"_s);
        Alert::dismissAll(); // before the answer has reached the check
        QTRY_COMPARE(Task::running(), 0);
        QCOMPARE(m_opened, QList<QUrl>({QUrl(downloadAddress)}));
    }

    void aCancelledCheckEndsWithoutAWord()
    {
        m_service->answerAll(Reply::silence());
        OutputCapture output;
        check(false);
        QTRY_COMPARE(m_service->requests().size(), 1);
        HttpSession::shared().cancelAll();
        QCOMPARE(Task::running(), 0);
        QCOMPARE(output.diagnostics(), QByteArray());
    }

    void dismissedAlertsEndTheirChecks()
    {
        serve(feed("1.3.0"));
        check(false);
        check(false);
        QTRY_COMPARE(openAlerts().size(), 2);
        Alert::dismissAll();
        QTRY_COMPARE(Task::running(), 0);
        QVERIFY(m_opened.isEmpty());
    }

public Q_SLOTS:
    void open(const QUrl &url) { m_opened << url; }

private:
    void serve(const QByteArray &body) { m_service->answerAll(Reply::whole(body)); }
    void check(bool silent) { Task::start(UpdateManager::shared().checkForUpdates(silent)); }

    QDialog *awaitAlert()
    {
        if (!QTest::qWaitFor([] { return openAlerts().size() == 1; }))
            qFatal("no alert came");
        return openAlerts().constFirst();
    }

    void press(const QString &text)
    {
        const auto buttons = awaitAlert()->findChildren<QPushButton *>();
        for (QPushButton *button : buttons) {
            if (button->text() == text)
                QTest::mouseClick(button, Qt::LeftButton);
        }
    }

    std::unique_ptr<LoopbackService> m_service;
    QList<QUrl> m_opened;
};

QTEST_MAIN(UpdateManagerTest)
#include "UpdateManagerTest.moc"
