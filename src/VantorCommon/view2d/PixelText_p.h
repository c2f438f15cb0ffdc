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

/// "[X=3; Y=7] [V=12;200;7]", for the line below a viewer. Empty for other channel counts than 1, 3 and 4 and
/// outside the image.
inline QString PixelReadout(const Vantor::Algorithms::CImage& image, int x, int y)
{
    const unsigned char* pPixel = image.GetPixel(x, y);
    const int nChannels = image.GetChannel();
    if (!pPixel || (nChannels != 1 && nChannels != 3 && nChannels != 4))
        return QString();
    const QString strValues = PixelValues(pPixel, nChannels, QStringLiteral(";"));
    return QStringLiteral("[X=%1; Y=%2] [V=%3]").arg(QString::number(x), QString::number(y), strValues);
}
