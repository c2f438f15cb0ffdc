// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/image/CImage.h>

#include <QString>
#include <QStringList>

/// "12, 200, 7": the first bytes of a pixel, one for each channel, with something in between.
inline QString PixelValues(const unsigned char* pPixel, int nChannels, const QString& strBetween)
{
    QStringList lstValues;
    for (int c = 0; c < nChannels; ++c)
        lstValues.append(QString::number(pPixel[c]));
    return lstValues.join(strBetween);
}

/// "Pixel: [12, 200, 7]", for the property panel. Empty outside the image (null) and for images that are not
/// interleaved bytes.
inline QString PixelText(Vantor::Algorithms::EImageType eType, const unsigned char* pPixel, int nChannels)
{
    if (eType != Vantor::Algorithms::EImageType::Interleaved || !pPixel)
        return QString();
    return QStringLiteral("Pixel: [%1]").arg(PixelValues(pPixel, nChannels, QStringLiteral(", ")));
}

/// A pixel that need not be waited for; null outside the image and for a page that is still to come.
inline const unsigned char* PixelAtHand(const Vantor::Algorithms::CImage& image, int x, int y)
{
    return image.HasPixels() ? image.GetPixel(x, y) : nullptr;
}

/// "[X=3; Y=7] [V=12;200;7]", for the line below a viewer. Empty for other channel counts than 1, 3 and 4,
/// outside the image and while it has no pixels.
inline QString PixelReadout(const Vantor::Algorithms::CImage& image, int x, int y)
{
    const unsigned char* pPixel = PixelAtHand(image, x, y);
    const int nChannels = image.GetChannel();
    if (!pPixel || (nChannels != 1 && nChannels != 3 && nChannels != 4))
        return QString();
    const QString strValues = PixelValues(pPixel, nChannels, QStringLiteral(";"));
    return QStringLiteral("[X=%1; Y=%2] [V=%3]").arg(QString::number(x), QString::number(y), strValues);
}
