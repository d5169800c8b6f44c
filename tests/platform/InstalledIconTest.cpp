// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Helpers.h"
#include "MenuBar/Linux/StatusItem/StatusDotImage.h"
#include "StatusHost.h"
#include "TestSessionBus.h"

#include <QApplication>
#include <QDir>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString drawings = QStringLiteral(VANTELO_STATUS_ICONS);

/// The value of an attribute that the drawing has once.
QString attribute(const QString &drawing, const QString &name)
{
    return QRegularExpression(u" %1=\"([^\"]+)\""_s.arg(name)).match(drawing).captured(1);
}

} // namespace

class InstalledIconTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_data = std::make_unique<QTemporaryDir>();
        qputenv("XDG_DATA_DIRS", QFile::encodeName(m_data->path()));
        m_host = std::make_unique<StatusHost>();
        m_host->startWatcher();
        m_extra = MenuBarExtra::create();
        QTRY_VERIFY(m_host->hasItem());
    }

    void cleanup()
    {
        m_extra.reset();
        m_host.reset();
    }

    void anIconThatIsNotInstalledIsNotNamed_data() { eachDot(); }

    void anIconThatIsNotInstalledIsNotNamed()
    {
        QFETCH(const StatusDot, dot);
        m_extra->setLabel({.dot = dot, .text = {}, .accessibleDescription = {}});
        QCOMPARE(m_host->property(u"IconName"_s), u""_s);
    }

    void anInstalledIconIsNamedForHostsThatReadNoPixmaps_data() { eachDot(); }

    void anInstalledIconIsNamedForHostsThatReadNoPixmaps()
    {
        QFETCH(const StatusDot, dot);
        QFETCH(const QString, icon);
        install();
        m_extra->setLabel({.dot = dot, .text = {}, .accessibleDescription = {}});
        QCOMPARE(m_host->property(u"IconName"_s), icon);
        QVERIFY(!m_host->property(u"IconPixmap"_s).toArray().isEmpty());
    }

    void theInstalledDrawingIsTheDotOfThePixmaps_data() { eachDot(); }

    void theInstalledDrawingIsTheDotOfThePixmaps()
    {
        QFETCH(const StatusDot, dot);
        QFETCH(const QString, icon);
        QFile file(drawings + u'/' + icon + u".svg"_s);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QString drawing = QString::fromUtf8(file.readAll());
        const int size = attribute(drawing, u"width"_s).toInt();
        const int rim = attribute(drawing, u"stroke-width"_s).toInt();
        const int margin = size / 2 - attribute(drawing, u"r"_s).toInt() - rim / 2;
        const QImage image = statusDotImage(dot, size);

        const auto colourAt = [&](int x) { return image.pixelColor(x, size / 2).name(); };
        QCOMPARE(colourAt(size / 2), attribute(drawing, u"fill"_s));
        QCOMPARE(image.pixelColor(margin - 1, size / 2).alpha(), 0);
        QCOMPARE(colourAt(margin + 1), attribute(drawing, u"stroke"_s));
        QCOMPARE(colourAt(margin + rim - 1), attribute(drawing, u"stroke"_s));
        QCOMPARE(colourAt(margin + rim + 1), attribute(drawing, u"fill"_s));
    }

private:
    static void eachDot()
    {
        QTest::addColumn<StatusDot>("dot");
        QTest::addColumn<QString>("icon");
        QTest::newRow("green") << StatusDot::Green << u"app.vantelo.Vantelo-green"_s;
        QTest::newRow("red") << StatusDot::Red << u"app.vantelo.Vantelo-red"_s;
        QTest::newRow("white") << StatusDot::White << u"app.vantelo.Vantelo-white"_s;
    }

    void install()
    {
        const QDir icons(m_data->filePath(u"icons/hicolor/scalable"_s));
        QVERIFY(icons.mkpath(u"."_s));
        QVERIFY(QFile::link(drawings, icons.filePath(u"status"_s)));
    }

    std::unique_ptr<QTemporaryDir> m_data;
    std::unique_ptr<StatusHost> m_host;
    std::unique_ptr<MenuBarExtra> m_extra;
};

int main(int argc, char **argv)
{
    requireStatusHost();
    const TestSessionBus bus;
    const QTemporaryDir home;
    qputenv("XDG_DATA_HOME", QFile::encodeName(home.path()));
    const QApplication application(argc, argv);
    InstalledIconTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "InstalledIconTest.moc"
