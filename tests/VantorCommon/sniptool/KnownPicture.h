// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QColor>
#include <QImage>

/// The colour of a pixel of the known screen, in device pixels. Blue is 128 or more, so that neither the grey
/// nor the green of the overlay occurs.
inline QRgb KnownPixel(int x, int y)
{
    return qRgb((37 * x + 59 * y) & 255, (x / 5 + 3 * y) & 255, 128 + ((x ^ y) & 127));
}

inline QImage KnownPicture(const QRect& rect)
{
    QImage image(rect.size(), QImage::Format_RGB32);
    for (int y = 0; y < rect.height(); ++y)
        for (int x = 0; x < rect.width(); ++x)
            image.setPixel(x, y, KnownPixel(rect.x() + x, rect.y() + y));
    return image;
}
