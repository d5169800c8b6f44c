// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QApplication>
#include <QDir>
#include <QRegularExpression>
#include <QScrollArea>
#include <QTest>

namespace Pictures {

/// Pictures of the open windows, each whole where it scrolls, in the build tree's folder "pictures" if the test that
/// just ran has failed. To be called while they are still open.
inline void keepIfFailed()
{
    using namespace Qt::StringLiterals;
    if (!QTest::currentTestFailed())
        return;
    const QDir folder(QCoreApplication::applicationDirPath() + u"/../pictures"_s);
    QStringList name{QCoreApplication::applicationName(), QString::fromLatin1(QTest::currentTestFunction())};
    if (QTest::currentDataTag())
        name << QString::fromLatin1(QTest::currentDataTag());
    if (!folder.mkpath(u"."_s))
        return;
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (!window->isVisible())
            continue;
        auto *const area = window->findChild<QScrollArea *>();
        QString title = (name + QStringList(window->accessibleName() + window->windowTitle())).join(u'-');
        title.replace(QRegularExpression(u"[^\\w.-]+"_s), u"_"_s);
        const QString path = QDir::cleanPath(folder.absoluteFilePath(title + u".png"_s));
        if ((area ? area->widget() : window)->grab().save(path))
            qInfo("a picture: %s", qPrintable(path));
    }
}

} // namespace Pictures
