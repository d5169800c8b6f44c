// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Look/SystemSymbol.h"

#include "Look/macOS/SymbolPicture.h"

#include <QPainter>

void SystemSymbol::paint(QPainter &painter, const QString &name, const QRectF &square, const QColor &tint)
{
    QImage image = symbolPicture(name, (square.size() * painter.device()->devicePixelRatioF()).toSize().width());
    if (image.isNull())
        qFatal("no system symbol of this name");
    QPainter tinting(&image);
    tinting.setCompositionMode(QPainter::CompositionMode_SourceIn);
    tinting.fillRect(image.rect(), tint);
    tinting.end();

    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(square, image);
    painter.restore();
}
