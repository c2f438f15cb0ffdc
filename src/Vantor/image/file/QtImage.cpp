// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/file/QtImage_p.h>

#include <Vantor/image/CImage.h>
#include <Vantor/image/file/DecodeBounds_p.h>

#include <QImageReader>

#include <array>
#include <cstdlib>

namespace Vantor::Algorithms
{

namespace
{
/// Writes one pixel in the channels of a core image.
template <int Channels> void PutPixel(unsigned char* pTo, QRgb pixel)
{
    pTo[0] = static_cast<unsigned char>(qRed(pixel));
    if (Channels >= 3) {
        pTo[1] = static_cast<unsigned char>(qGreen(pixel));
        pTo[2] = static_cast<unsigned char>(qBlue(pixel));
    }
    if (Channels == 4)
        pTo[3] = static_cast<unsigned char>(qAlpha(pixel));
}

template <int Channels> void ConvertRgb32Row(const uchar* pFrom, unsigned char* pTo, int nWidth)
{
    const QRgb* pPixels = reinterpret_cast<const QRgb*>(pFrom);
    for (int x = 0; x < nWidth; ++x)
        PutPixel<Channels>(pTo + x * Channels, pPixels[x]);
}

using Palette = std::array<QRgb, 256>;

/// The colours of all 256 possible indices; those without an entry are black.
Palette PaletteOf(const QImage& image)
{
    Palette palette;
    palette.fill(qRgb(0, 0, 0));
    const QVector<QRgb> colors = image.colorTable();
    for (int i = 0; i < colors.size() && i < static_cast<int>(palette.size()); ++i)
        palette[static_cast<std::size_t>(i)] = colors[i];
    return palette;
}

template <int Channels>
void ConvertIndexedRow(const uchar* pFrom, unsigned char* pTo, int nWidth, const Palette& palette)
{
    for (int x = 0; x < nWidth; ++x)
        PutPixel<Channels>(pTo + x * Channels, palette[pFrom[x]]);
}

template <int Channels>
void ConvertMonoRow(const uchar* pFrom, unsigned char* pTo, int nWidth, const Palette& palette)
{
    for (int x = 0; x < nWidth; ++x)
        PutPixel<Channels>(pTo + x * Channels, palette[(pFrom[x >> 3] >> (7 - (x & 7))) & 1]);
}

template <int Channels> bool ConvertRows(const QImage& from, CImage& image)
{
    const Palette palette = PaletteOf(from);
    unsigned char** pRows = image.GetRows();
    const int nWidth = from.width();
    for (int y = 0; y < from.height(); ++y) {
        const uchar* pFrom = from.constScanLine(y);
        switch (from.format()) {
        case QImage::Format_Mono:
            ConvertMonoRow<Channels>(pFrom, pRows[y], nWidth, palette);
            break;
        case QImage::Format_Indexed8:
            ConvertIndexedRow<Channels>(pFrom, pRows[y], nWidth, palette);
            break;
        case QImage::Format_RGB32:
        case QImage::Format_ARGB32:
            ConvertRgb32Row<Channels>(pFrom, pRows[y], nWidth);
            break;
        default:
            return false;
        }
    }
    return true;
}

} // namespace

bool ConvertToCore(const QImage& from, int channels, CImage& image)
{
    if (from.isNull())
        return false;
    if (image.Create(from.width(), from.height(), channels, 8, EImageType::Interleaved, kRowAlignment) != 0)
        return false;
    if (channels == 1)
        return ConvertRows<1>(from, image);
    return channels == 3 ? ConvertRows<3>(from, image) : ConvertRows<4>(from, image);
}

bool ReadWithQt(QIODevice& device, const char* format, const SExpectedImage& expected, CImage& image)
{
    QImageReader reader(&device, QByteArray(format));
    reader.setAutoDetectImageFormat(false);
    reader.setAutoTransform(true);
    const QSize size = reader.size(); // the height of a picture that is stored top down comes negative
    if (size.width() != expected.nWidth || std::abs(static_cast<qint64>(size.height())) != expected.nHeight)
        return false;

    QImage decoded;
    return reader.read(&decoded) && ConvertToCore(decoded, expected.nChannels, image);
}

} // namespace Vantor::Algorithms
