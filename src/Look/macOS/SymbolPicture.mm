// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Look/macOS/SymbolPicture.h"

#include "Look/macOS/NativeText.h"

#include <cstring>

#import <AppKit/AppKit.h>

QImage symbolPicture(const QString &name, int side)
{
    NSImage *const symbol = [NSImage imageWithSystemSymbolName:nativeText(name) accessibilityDescription:nil];
    if (!symbol)
        return {};
    NSBitmapImageRep *const bitmap = [[NSBitmapImageRep alloc] initWithBitmapDataPlanes:nullptr
                                                                             pixelsWide:side
                                                                             pixelsHigh:side
                                                                          bitsPerSample:8
                                                                        samplesPerPixel:4
                                                                               hasAlpha:YES
                                                                               isPlanar:NO
                                                                         colorSpaceName:NSDeviceRGBColorSpace
                                                                            bytesPerRow:0
                                                                           bitsPerPixel:0];
    std::memset(bitmap.bitmapData, 0, static_cast<std::size_t>(bitmap.bytesPerRow * side)); // it may hold anything
    const QSizeF size = QSizeF(symbol.size.width, symbol.size.height).scaled(side, side, Qt::KeepAspectRatio);
    const NSRect place = {{(side - size.width()) / 2.0, (side - size.height()) / 2.0}, {size.width(), size.height()}};
    [NSGraphicsContext saveGraphicsState];
    NSGraphicsContext.currentContext = [NSGraphicsContext graphicsContextWithBitmapImageRep:bitmap];
    [symbol drawInRect:place];
    [NSGraphicsContext restoreGraphicsState];
    return QImage(bitmap.bitmapData, side, side, bitmap.bytesPerRow, QImage::Format_RGBA8888_Premultiplied).copy();
}
