// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/image/CImage.h>

#include <QString>

/// "Pixel: [12, 200, 7]": the first bytes of a pixel, one per channel. Empty where there is nothing to show:
/// outside the image (null) and for images that are not interleaved bytes.
inline QString PixelText(Vantor::Algorithms::EImageType eType, const unsigned char* pPixel, int nChannels)
{
    if (eType != Vantor::Algorithms::EImageType::Interleaved || !pPixel)
        return QString();
    QString strText = QStringLiteral("Pixel: [");
    for (int c = 0; c < nChannels; ++c)
        strText += (c > 0 ? QStringLiteral(", ") : QString()) + QString::number(pPixel[c]);
    return strText + QStringLiteral("]");
}
