// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

// The limit: the least that a Qt program with an item in the status area and the same two requests costs. It shows one
// figure, bears no failure and remembers nothing. Frozen, so that later figures compare: limit TODAY WEEK (addresses)
#include <QApplication>
#include <QJsonDocument>
#include <QJsonValue>
#include <QMenu>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QSystemTrayIcon>
#include <QTimer>

using namespace Qt::StringLiterals;

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QPixmap dot(22, 22);
    dot.fill(Qt::green);
    QSystemTrayIcon item{QIcon(dot)};
    QNetworkAccessManager network;
    const auto get = [&](const char *address, auto show) {
        QNetworkReply *const reply = network.get(QNetworkRequest(QUrl(QString::fromLatin1(address))));
        QObject::connect(reply, &QNetworkReply::finished, reply, [=] {
            show(QJsonDocument::fromJson(reply->readAll())["data"_L1][0]);
            reply->deleteLater();
        });
    };
    const auto showWeek = [](const QJsonValue &) {};
    const auto showToday = [&](const QJsonValue &today) { item.setToolTip(today["impressions"_L1].toString()); };
    const auto refresh = [&] { get(argv[1], [&](auto today) { showToday(today), get(argv[2], showWeek); }); };
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, refresh);
    timer.start(std::chrono::minutes(10));
    QMenu menu;
    menu.addAction(QStringLiteral("🔄 Refresh"), refresh);
    item.setContextMenu(&menu);
    item.show();
    refresh();
    return QApplication::exec();
}
