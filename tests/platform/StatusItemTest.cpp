// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Helpers.h"
#include "MenuBar/MenuBarExtra.h"
#include "StatusHost.h"
#include "TestSessionBus.h"

#include <QApplication>
#include <QImage>
#include <QMenu>
#include <QTest>
#include <QtEndian>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

MenuBarLabel delivering(const QString &text)
{
    return {.dot = StatusDot::Green, .text = text, .accessibleDescription = u"Delivering: "_s + text};
}

/// A picture as the host got it, decoded by hand.
QImage decoded(const QJsonValue &pixmap)
{
    const QByteArray bytes = QByteArray::fromBase64(pixmap[2].toString().toLatin1());
    QImage image(pixmap[0].toInt(), pixmap[1].toInt(), QImage::Format_ARGB32);
    if (bytes.size() != image.sizeInBytes())
        return {};
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, qFromBigEndian<quint32>(bytes.constData() + 4 * (y * image.width() + x)));
    }
    return image;
}

/// Relative luminance as accessibility guidelines define it, of the pixel on an opaque ground.
double luminance(QRgb pixel, int ground)
{
    const auto linear = [&](int channel) {
        const double value = (channel * qAlpha(pixel) + ground * (255 - qAlpha(pixel))) / 255.0 / 255.0;
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(qRed(pixel)) + 0.7152 * linear(qGreen(pixel)) + 0.0722 * linear(qBlue(pixel));
}

/// The strongest contrast that a row through the middle of the picture makes with a ground of that grey.
double bestContrast(const QImage &image, int ground)
{
    double best = 1;
    const double groundLuminance = luminance(0, ground);
    for (int x = 0; x < image.width(); ++x) {
        const double own = luminance(image.pixel(x, image.height() / 2), ground);
        best = std::max(best, (std::max(own, groundLuminance) + 0.05) / (std::min(own, groundLuminance) + 0.05));
    }
    return best;
}

QMenu *openMenu() { return qobject_cast<QMenu *>(QApplication::activePopupWidget()); }

} // namespace

class StatusItemTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_host = std::make_unique<StatusHost>();
        m_host->startWatcher();
        m_extra = MenuBarExtra::create();
        m_extra->setLabel(delivering(u"12,345"_s));
        m_extra->setRows({MenuRow::line(u"📊 Today"_s), MenuRow::button(u"Quit & go"_s, [] {})});
        QTRY_VERIFY(m_host->hasItem());
        m_host->takeSignals();
    }

    void cleanup()
    {
        m_extra.reset();
        m_host.reset();
        qunsetenv("XDG_ACTIVATION_TOKEN");
    }

    void propertiesHaveTheValuesAndTypesThatHostsExpect()
    {
        QJsonObject properties = m_host->ask(u"properties"_s).toObject();
        properties.remove(u"IconPixmap"_s);
        const QJsonObject expected{
            {u"AttentionAccessibleDesc"_s, QJsonArray{u"s"_s, u""_s}},
            {u"AttentionIconName"_s, QJsonArray{u"s"_s, u""_s}},
            {u"AttentionIconPixmap"_s, QJsonArray{u"a(iiay)"_s, QJsonArray()}},
            {u"AttentionMovieName"_s, QJsonArray{u"s"_s, u""_s}},
            {u"Category"_s, QJsonArray{u"s"_s, u"ApplicationStatus"_s}},
            {u"IconAccessibleDesc"_s, QJsonArray{u"s"_s, u"Delivering: 12,345"_s}},
            {u"IconName"_s, QJsonArray{u"s"_s, u""_s}},
            {u"IconThemePath"_s, QJsonArray{u"s"_s, u""_s}},
            {u"Id"_s, QJsonArray{u"s"_s, u"vantelo"_s}},
            {u"ItemIsMenu"_s, QJsonArray{u"b"_s, true}},
            {u"Menu"_s, QJsonArray{u"o"_s, u"/org/ayatana/NotificationItem/vantelo/Menu"_s}},
            {u"OverlayIconName"_s, QJsonArray{u"s"_s, u""_s}},
            {u"OverlayIconPixmap"_s, QJsonArray{u"a(iiay)"_s, QJsonArray()}},
            {u"Status"_s, QJsonArray{u"s"_s, u"Active"_s}},
            {u"Title"_s, QJsonArray{u"s"_s, u"Vantelo"_s}},
            {u"ToolTip"_s,
                QJsonArray{u"(sa(iiay)ss)"_s, QJsonArray{u""_s, QJsonArray(), u"🟢 12,345"_s, u"Vantelo"_s}}},
            {u"WindowId"_s, QJsonArray{u"i"_s, 0}},
            {u"XAyatanaLabel"_s, QJsonArray{u"s"_s, u"12,345"_s}},
            {u"XAyatanaLabelGuide"_s, QJsonArray{u"s"_s, u"88,888,888"_s}},
            {u"XAyatanaOrderingIndex"_s, QJsonArray{u"u"_s, 0}},
        };
        QCOMPARE(properties, expected);
    }

    void idAndTitleStayWhateverTheLabel()
    {
        m_extra->setLabel({.dot = StatusDot::White, .text = u"ERR"_s, .accessibleDescription = {}});
        QCOMPARE(m_host->property(u"Id"_s), u"vantelo"_s);
        QCOMPARE(m_host->property(u"Title"_s), u"Vantelo"_s);
        QCOMPARE(m_host->property(u"XAyatanaLabel"_s), u"ERR"_s);
        QCOMPARE(m_host->property(u"ToolTip"_s)[2], u"⚪ ERR"_s);
    }

    void theIconIsTheDotInEverySize_data()
    {
        QTest::addColumn<StatusDot>("dot");
        QTest::addColumn<QColor>("colour");
        QTest::newRow("green") << StatusDot::Green << QColor(0x34, 0xc7, 0x59);
        QTest::newRow("red") << StatusDot::Red << QColor(0xff, 0x3b, 0x30);
        QTest::newRow("white") << StatusDot::White << QColor(0xff, 0xff, 0xff);
    }

    void theIconIsTheDotInEverySize()
    {
        QFETCH(const StatusDot, dot);
        QFETCH(const QColor, colour);
        m_extra->setLabel({.dot = dot, .text = u"1"_s, .accessibleDescription = {}});
        QList<int> sizes;
        for (const QJsonValue pixmap : m_host->property(u"IconPixmap"_s).toArray()) {
            const QImage image = decoded(pixmap);
            sizes << image.width();
            QVERIFY(!image.isNull());
            QCOMPARE(image.height(), image.width());
            QCOMPARE(QColor::fromRgba(image.pixel(image.width() / 2, image.height() / 2)), colour);
            for (const QPoint &corner : {QPoint(0, 0), QPoint(image.width() - 1, image.height() - 1)})
                QCOMPARE(qAlpha(image.pixel(corner)), 0);
        }
        QCOMPARE(sizes, QList<int>({16, 22, 24, 32, 48, 64}));
    }

    void theIconIsLegibleOnDarkAndOnLightBars_data() { theIconIsTheDotInEverySize_data(); }

    void theIconIsLegibleOnDarkAndOnLightBars()
    {
        QFETCH(const StatusDot, dot);
        m_extra->setLabel({.dot = dot, .text = u"1"_s, .accessibleDescription = {}});
        for (const QJsonValue pixmap : m_host->property(u"IconPixmap"_s).toArray()) {
            const QImage image = decoded(pixmap);
            QVERIFY2(bestContrast(image, 0x20) >= 3, qPrintable(QString::number(bestContrast(image, 0x20))));
            QVERIFY2(bestContrast(image, 0xff) >= 3, qPrintable(QString::number(bestContrast(image, 0xff))));
        }
    }

    void theIconsEdgeIsSmoothAndItsAlphaStraight()
    {
        m_extra->setLabel({.dot = StatusDot::White, .text = u"1"_s, .accessibleDescription = {}});
        const QImage image = decoded(m_host->property(u"IconPixmap"_s)[0]);
        int soft = 0;
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, image.height() / 2);
            if (qAlpha(pixel) == 0 || qAlpha(pixel) == 255)
                continue;
            ++soft;
            QVERIFY(qRed(pixel) > 0x50); // the rim's own grey, not darkened by the alpha
        }
        QVERIFY(soft > 0);
    }

    void aRepeatedLabelIsNotAnnounced()
    {
        constexpr int times = 20; // more than a registration has reminders
        for (int i = 0; i < times; ++i)
            m_extra->setLabel(delivering(u"12,345"_s));
        QCOMPARE(m_host->takeSignalNames(), QStringList());
        QVERIFY(m_host->reminders().size() < times);
    }

    void aNewCountIsAnnouncedWithoutANewIcon()
    {
        m_extra->setLabel(delivering(u"12,346"_s));
        const QJsonArray sent = m_host->takeSignals();
        QCOMPARE(sent, QJsonArray({
                           QJsonObject{{u"member"_s, u"XAyatanaNewLabel"_s},
                               {u"arguments"_s, QJsonArray{u"12,346"_s, u"88,888,888"_s}}},
                           QJsonObject{{u"member"_s, u"NewToolTip"_s}, {u"arguments"_s, QJsonArray()}},
                           QJsonObject{{u"member"_s, u"PropertiesChanged"_s},
                               {u"arguments"_s,
                                   QJsonArray{u"org.kde.StatusNotifierItem"_s,
                                       QJsonObject{{u"IconAccessibleDesc"_s, u"Delivering: 12,346"_s}}, QJsonArray()}}},
                       }));
    }

    void aNewDotIsAnnouncedWithoutANewLabel()
    {
        MenuBarLabel label = delivering(u"12,345"_s);
        label.dot = StatusDot::Red;
        m_extra->setLabel(label);
        QCOMPARE(m_host->takeSignalNames(), QStringList({u"NewIcon"_s, u"NewToolTip"_s}));
        QCOMPARE(m_host->property(u"ToolTip"_s)[2], u"🔴 12,345"_s);
    }

    // GNOME draws at each of both, and the picture that it found at the first could stay.
    void aNewDotIsAnnouncedOnceWithItsDescription()
    {
        MenuBarLabel label = delivering(u"12,345"_s);
        label.dot = StatusDot::Red;
        label.accessibleDescription = u"Stopped"_s;
        m_extra->setLabel(label);
        QCOMPARE(m_host->takeSignalNames(), QStringList({u"NewIcon"_s, u"NewToolTip"_s}));
        QCOMPARE(m_host->property(u"IconAccessibleDesc"_s), u"Stopped"_s);
    }

    void aNewDotIsAnnouncedOnceMoreLater()
    {
        MenuBarLabel label = delivering(u"12,345"_s);
        label.dot = StatusDot::Red;
        m_extra->setLabel(label);
        m_host->takeSignalNames();
        QStringList later;
        const auto isAnnounced = [&] { return !(later += m_host->takeSignalNames()).isEmpty(); };
        QVERIFY(QTest::qWaitFor(isAnnounced, 30'000)); // QTRY_… would ask for minutes before it gives up
        QCOMPARE(later, QStringList({u"NewIcon"_s}));
    }

    void aNewDescriptionAloneIsAnnouncedAsAProperty()
    {
        MenuBarLabel label = delivering(u"12,345"_s);
        label.accessibleDescription = u"Still delivering"_s;
        m_extra->setLabel(label);
        QCOMPARE(m_host->takeSignalNames(), QStringList({u"PropertiesChanged"_s}));
        QCOMPARE(m_host->property(u"IconAccessibleDesc"_s), u"Still delivering"_s);
    }

    void aClickOfAHostWithoutMenusPopsUpTheRows_data()
    {
        QTest::addColumn<QString>("method");
        QTest::newRow("left") << u"Activate"_s;
        QTest::newRow("right") << u"ContextMenu"_s;
    }

    void aClickOfAHostWithoutMenusPopsUpTheRows()
    {
        QFETCH(const QString, method);
        QCOMPARE(m_host->callItem(method, u"(100, 50)"_s), QJsonObject({{u"value"_s, QJsonArray()}}));
        QTRY_VERIFY(openMenu());
        QCOMPARE(openMenu()->pos(), QPoint(100, 50));
        QStringList texts;
        for (const QAction *action : openMenu()->actions())
            texts << action->text();
        QCOMPARE(texts, QStringList({u"📊 Today"_s, u"Quit && go"_s}));
        openMenu()->close();
    }

    void anOpenPopUpFollowsTheRowsAndIsUsedAgain()
    {
        m_host->callItem(u"ContextMenu"_s, u"(100, 50)"_s);
        QTRY_VERIFY(openMenu());
        const QMenu *const popUp = openMenu();
        m_extra->setRows({MenuRow::line(u"📊 Tomorrow"_s), MenuRow::button(u"Quit & go"_s, [] {})});
        QCOMPARE(popUp->actions().constFirst()->text(), u"📊 Tomorrow"_s);
        openMenu()->close();
        m_host->callItem(u"ContextMenu"_s, u"(100, 50)"_s);
        QTRY_COMPARE(openMenu(), popUp);
        openMenu()->close();
    }

    void aHostThatKnowsNoPlaceGetsThePopUpAtThePointer()
    {
        QCursor::setPos(70, 80);
        m_host->callItem(u"ContextMenu"_s, u"(0, 0)"_s);
        QTRY_VERIFY(openMenu());
        QCOMPARE(openMenu()->pos(), QPoint(70, 80));
        openMenu()->close();
    }

    void middleClickAndWheelDoNothing()
    {
        QCOMPARE(m_host->callItem(u"SecondaryActivate"_s, u"(1, 2)"_s), QJsonObject({{u"value"_s, QJsonArray()}}));
        QCOMPARE(m_host->callItem(u"Scroll"_s, u"(120, 'vertical')"_s), QJsonObject({{u"value"_s, QJsonArray()}}));
        QVERIFY(!openMenu());
        QCOMPARE(m_host->takeSignalNames(), QStringList());
    }

    void activateAnswersButIsNotIntrospected()
    {
        const QString xml = m_host->ask(u"introspection"_s).toString();
        QVERIFY(xml.contains(u"<method name=\"SecondaryActivate\">"_s));
        QVERIFY(xml.contains(u"<property name=\"IconPixmap\" type=\"a(iiay)\" access=\"read\"/>"_s));
        QVERIFY(xml.contains(u"<signal name=\"XAyatanaNewLabel\">"_s));
        QVERIFY(!xml.contains(u"\"Activate\""_s));
    }

    void everyPropertyIsIntrospectedWithItsType()
    {
        const QString xml = m_host->ask(u"introspection"_s).toString();
        const QJsonObject properties = m_host->ask(u"properties"_s).toObject();
        for (auto it = properties.begin(); it != properties.end(); ++it) {
            const QString line =
                u"<property name=\"%1\" type=\"%2\" access=\"read\"/>"_s.arg(it.key(), it.value()[0].toString());
            QVERIFY2(xml.contains(line), qPrintable(line));
        }
        QCOMPARE(xml.count(u"access=\"read\""_s), properties.size());
    }

    void theActivationTokenIsKeptForTheNextWindow()
    {
        QCOMPARE(m_host->callItem(u"ProvideXdgActivationToken"_s, u"('a-token',)"_s),
            QJsonObject({{u"value"_s, QJsonArray()}}));
        QCOMPARE(qEnvironmentVariable("XDG_ACTIVATION_TOKEN"), u"a-token"_s);
    }

    void nonsenseIsRefused_data()
    {
        QTest::addColumn<QString>("method");
        QTest::addColumn<QString>("arguments");
        QTest::newRow("no arguments") << u"Activate"_s << u"()"_s;
        QTest::newRow("texts for numbers") << u"Activate"_s << u"('1', '2')"_s;
        QTest::newRow("too few arguments") << u"ContextMenu"_s << u"(1,)"_s;
        QTest::newRow("a number for a text") << u"ProvideXdgActivationToken"_s << u"(1,)"_s;
        QTest::newRow("an unknown method") << u"Explode"_s << u"()"_s;
    }

    void nonsenseIsRefused()
    {
        QFETCH(const QString, method);
        QFETCH(const QString, arguments);
        QCOMPARE(m_host->callItem(method, arguments)[u"error"_s], u"org.freedesktop.DBus.Error.UnknownMethod"_s);
        QVERIFY(!openMenu());
        QCOMPARE(m_host->property(u"XAyatanaLabel"_s), u"12,345"_s);
    }

    void nullCharactersDoNotCutTheLabelShort()
    {
        m_extra->setLabel({.dot = StatusDot::Green, .text = u"1\0002"_s, .accessibleDescription = u"one\0two"_s});
        QCOMPARE(m_host->property(u"XAyatanaLabel"_s), u"1\uFFFD2"_s);
        QCOMPARE(m_host->property(u"IconAccessibleDesc"_s), u"one\uFFFDtwo"_s);
    }

private:
    std::unique_ptr<StatusHost> m_host;
    std::unique_ptr<MenuBarExtra> m_extra;
};

int main(int argc, char **argv)
{
    requireStatusHost();
    const TestSessionBus bus;
    qputenv("XDG_DATA_DIRS", "/nowhere"); // an installed Vantelo lends no icons
    qputenv("XDG_DATA_HOME", "/nowhere");
    const QApplication application(argc, argv);
    StatusItemTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "StatusItemTest.moc"
