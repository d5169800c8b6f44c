// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "MenuBar/Linux/StatusItem/StatusNotifierTypes.h"

#include "MenuBar/Linux/StatusItem/StatusDotImage.h"

#include <QDBusMetaType>
#include <QtEndian>

#include <array>
#include <map>

namespace {

IconPixmap pixmapOf(const QImage &image)
{
    const auto count = image.sizeInBytes() / qsizetype{sizeof(quint32)};
    IconPixmap pixmap{.width = image.width(), .height = image.height(), .bytes = QByteArray(image.sizeInBytes(), 0)};
    qToBigEndian<quint32>(image.constBits(), count, pixmap.bytes.data());
    return pixmap;
}

IconPixmaps drawn(StatusDot dot)
{
    IconPixmaps pixmaps;
    for (const int size : std::array{16, 22, 24, 32, 48, 64})
        pixmaps << pixmapOf(statusDotImage(dot, size));
    return pixmaps;
}

} // namespace

QDBusArgument &operator<<(QDBusArgument &argument, const IconPixmap &pixmap)
{
    argument.beginStructure();
    argument << pixmap.width << pixmap.height << pixmap.bytes;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, IconPixmap &pixmap)
{
    argument.beginStructure();
    argument >> pixmap.width >> pixmap.height >> pixmap.bytes;
    argument.endStructure();
    return argument;
}

QDBusArgument &operator<<(QDBusArgument &argument, const StatusToolTip &toolTip)
{
    argument.beginStructure();
    argument << toolTip.iconName << toolTip.iconPixmaps << toolTip.title << toolTip.body;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, StatusToolTip &toolTip)
{
    argument.beginStructure();
    argument >> toolTip.iconName >> toolTip.iconPixmaps >> toolTip.title >> toolTip.body;
    argument.endStructure();
    return argument;
}

void registerStatusNotifierTypes()
{
    qDBusRegisterMetaType<IconPixmap>();
    qDBusRegisterMetaType<IconPixmaps>();
    qDBusRegisterMetaType<StatusToolTip>();
}

const IconPixmaps &statusDotPixmaps(StatusDot dot)
{
    static std::map<StatusDot, IconPixmaps> cache;
    const auto known = cache.find(dot);
    return known != cache.end() ? known->second : cache.emplace(dot, drawn(dot)).first->second;
}
