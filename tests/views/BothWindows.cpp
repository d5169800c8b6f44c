// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

// Opens both windows with made-up credentials and figures, for screen readers and screenshots to look at:
//   BothWindows [--dark] [--points <size of the system font>] [--failure <message>] [--save <folder>]
// With --failure the service reports this error. With --save the program tests the connection, leaves pictures of
// the windows in the folder and ends.

#include "LoopbackService.h"
#include "State/AppState.h"
#include "TestPreferences.h"
#include "Views/WindowManager.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QPushButton>
#include <QStyleFactory>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

QPalette darkPalette()
{
    QPalette palette(QColor(0x35, 0x35, 0x35), QColor(0x2b, 0x2b, 0x2b));
    palette.setColor(QPalette::Base, QColor(0x1e, 0x1e, 0x1e));
    palette.setColor(QPalette::PlaceholderText, QColor(0x9a, 0x9a, 0x9a));
    return palette;
}

void savePictures(const QString &folder)
{
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows)
        if (window->isVisible() && !window->windowTitle().isEmpty())
            window->grab().save(folder + u'/' + window->windowTitle().section(u' ', -1).toLower() + u".png"_s);
    QCoreApplication::quit();
}

void pressTestConnection()
{
    const auto widgets = QApplication::allWidgets();
    for (QWidget *widget : widgets)
        if (auto *const button = qobject_cast<QPushButton *>(widget); button && button->text() == u"Test Connection"_s)
            button->click();
}

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addOptions({{u"dark"_s, {}}, {u"points"_s, {}, u"size"_s}, {u"save"_s, {}, u"folder"_s}});
    parser.addOption({u"failure"_s, {}, u"message"_s});
    parser.process(application);
    if (parser.isSet(u"dark"_s))
        QApplication::setPalette(darkPalette());
    if (parser.isSet(u"points"_s)) {
        QFont font = QApplication::font();
        font.setPointSizeF(parser.value(u"points"_s).toDouble());
        QApplication::setFont(font);
    }

    const TestPreferences preferences;
    preferences.write(u"accessToken"_s, u"EAtesttokentesttokentesttoken"_s);
    preferences.write(u"adAccountId"_s, u"act_123456789"_s);
    LoopbackService service;
    service.answerInsights(R"({"data": [{"impressions": "12345"}]})", R"({"data": []})");
    if (parser.isSet(u"failure"_s))
        service.answerAll(LoopbackService::Reply::whole(
            R"({"error": {"message": ")" + parser.value(u"failure"_s).toUtf8() + R"("}})"));
    const auto state = AppState::create();
    WindowManager::shared().openSetupGuide();
    WindowManager::shared().openSettings(state);
    if (parser.isSet(u"save"_s)) {
        QTimer::singleShot(500, &application, pressTestConnection);
        QTimer::singleShot(1500, &application, [&] { savePictures(parser.value(u"save"_s)); });
    }
    const int code = QApplication::exec();
    WindowManager::shared().closeAll();
    return code;
}
