// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/file/QtImage_p.h>

#include <Vantor/image/CImage.h>
#include <Vantor/image/PixelBuffer_p.h>
#include <Vantor/image/file/DecodeBounds_p.h>
#include <Vantor/image/file/Samples_p.h>

#include <QImageReader>
#include <QRgba64>

#include <array>
#include <cstdlib>
#include <cstring>

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

template <int Channels> void ConvertRgba64Row(const uchar* pFrom, unsigned char* pTo, int nWidth)
{
    const QRgba64* pPixels = reinterpret_cast<const QRgba64*>(pFrom);
    for (int x = 0; x < nWidth; ++x) {
        const QRgba64 pixel = pPixels[x];
        PutPixel<Channels>(pTo + x * Channels, qRgba(Scale16To8(pixel.red()), Scale16To8(pixel.green()),
                                                     Scale16To8(pixel.blue()), Scale16To8(pixel.alpha())));
    }
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

void ConvertGrey16Row(const uchar* pFrom, unsigned char* pTo, int nWidth)
{
    const quint16* pSamples = reinterpret_cast<const quint16*>(pFrom);
    for (int x = 0; x < nWidth; ++x)
        pTo[x] = Scale16To8(pSamples[x]);
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
        case QImage::Format_RGBX64:
        case QImage::Format_RGBA64:
            ConvertRgba64Row<Channels>(pFrom, pRows[y], nWidth);
            break;
        case QImage::Format_Grayscale8:
            std::memcpy(pRows[y], pFrom, static_cast<std::size_t>(nWidth));
            break;
        case QImage::Format_Grayscale16:
            ConvertGrey16Row(pFrom, pRows[y], nWidth);
            break;
        default:
            return false;
        }
    }
    return true;
}

bool IsGreyFormat(QImage::Format eFormat)
{
    return eFormat == QImage::Format_Grayscale8 || eFormat == QImage::Format_Grayscale16;
}
} // namespace

bool ConvertToCore(const QImage& from, int channels, CImage& image)
{
    if (from.isNull() || (channels != 1 && IsGreyFormat(from.format())))
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

    // Qt decodes into an image of the right size and format instead of making its own: grey goes straight
    // into the core image, the rest into a buffer that costs fewer page faults than a fresh one.
    QImage decoded;
    PixelBuffer pScratch;
    if (expected.eFormat == QImage::Format_Grayscale8) {
        if (image.Create(expected.nWidth, expected.nHeight, 1, 8, EImageType::Interleaved, kRowAlignment) !=
            0)
            return false;
        decoded =
            QImage(image.GetData(), expected.nWidth, expected.nHeight, image.GetStride(), expected.eFormat);
    } else if (expected.eFormat == QImage::Format_RGB32 || expected.eFormat == QImage::Format_ARGB32) {
        const std::size_t nRow = static_cast<std::size_t>(expected.nWidth) * sizeof(QRgb);
        pScratch = AllocatePixels(nRow * static_cast<std::size_t>(expected.nHeight));
        if (!pScratch)
            return false;
        decoded = QImage(pScratch.get(), expected.nWidth, expected.nHeight, static_cast<int>(nRow),
                         expected.eFormat);
    }
    if (!reader.read(&decoded))
        return false;
    if (image.GetData() && decoded.constBits() == image.GetData()) // also when it was flipped in place
        return true;
    return ConvertToCore(decoded, expected.nChannels, image);
}

QImage BorrowAsQImage(const CImage& image)
{
    const int nChannels = image.GetChannel();
    const QImage::Format eFormat = nChannels == 1   ? QImage::Format_Grayscale8
                                   : nChannels == 3 ? QImage::Format_RGB888
                                                    : QImage::Format_RGBA8888;
    return QImage(image.GetData(), image.GetWidth(), image.GetHeight(), image.GetStride(), eFormat);
}

} // namespace Vantor::Algorithms
