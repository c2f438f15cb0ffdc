// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/CImage.h>
#include <Vantor/image/file/BmpHeader_p.h>
#include <Vantor/image/file/DecodeBounds_p.h>
#include <Vantor/image/file/ImageFormats_p.h>
#include <Vantor/image/file/QtImage_p.h>

#include <QBuffer>
#include <QByteArray>

namespace Vantor::Algorithms
{

namespace
{
int ChannelsOf(const SBmpHeader& header)
{
    if (header.bGreyPalette)
        return 1;
    return header.nBits > 8 && header.nAlphaMask != 0 ? 4 : 3;
}

/// Rows that are read straight into the image: palettes and whole bytes per channel in the usual order.
bool IsPlain(const SBmpHeader& header)
{
    if (header.eCompression == EBmpCompression::BitFields)
        return header.nBits == 32 && header.bUsualMasks;
    switch (header.nBits) {
    case 1:
    case 2:
    case 4:
    case 8:
    case 24:
    case 32:
        return header.eCompression == EBmpCompression::None;
    default:
        return false;
    }
}

void ExpandIndexes(const SBmpHeader& header, const unsigned char* pFrom, unsigned char* pTo, int nWidth)
{
    const int nMask = (1 << header.nBits) - 1;
    const int nPerByte = 8 / header.nBits;
    for (int x = 0; x < nWidth; ++x, pTo += 3) {
        const int nShift = (nPerByte - 1 - x % nPerByte) * header.nBits;
        const quint32 nColor =
            header.palette[static_cast<std::size_t>((pFrom[x / nPerByte] >> nShift) & nMask)];
        pTo[0] = static_cast<unsigned char>(nColor >> 16);
        pTo[1] = static_cast<unsigned char>(nColor >> 8);
        pTo[2] = static_cast<unsigned char>(nColor);
    }
}

bool ReadPlainRows(QIODevice& device, const SBmpHeader& header, CImage& image)
{
    const int nWidth = static_cast<int>(header.nWidth);
    const int nHeight = static_cast<int>(header.nHeight);
    const int nChannels = ChannelsOf(header);
    const qint64 nStride = BmpStride(nWidth, header.nBits);
    const qint64 nUsed = (static_cast<qint64>(nWidth) * header.nBits + 7) / 8;
    if (image.Create(nWidth, nHeight, nChannels, 8, EImageType::Interleaved, kRowAlignment) != 0 ||
        !device.seek(header.nPixels))
        return false;
    const bool bInPlace = header.nBits == 8 * nChannels;
    QByteArray row(bInPlace ? 0 : static_cast<int>(nStride), Qt::Uninitialized);
    for (int i = 0; i < nHeight; ++i) {
        unsigned char* pTo = image.GetRows()[header.bTopDown ? i : nHeight - 1 - i];
        unsigned char* pFrom = bInPlace ? pTo : reinterpret_cast<unsigned char*>(row.data());
        if (device.read(reinterpret_cast<char*>(pFrom), nStride) < nUsed)
            return false;
        if (header.nBits > 8)
            ReorderBmpRow(pFrom, header.nBits / 8, pTo, nChannels, nWidth);
        else if (nChannels == 3)
            ExpandIndexes(header, pFrom, pTo, nWidth);
    }
    return true;
}

/// A JPEG or PNG file in the place of the pixels.
bool LoadEmbedded(QIODevice& device, const SBmpHeader& header, CImage& image)
{
    if (!device.seek(header.nPixels))
        return false;
    QByteArray content = device.readAll();
    QBuffer buffer(&content);
    return buffer.open(QIODevice::ReadOnly) &&
           (header.eCompression == EBmpCompression::Jpeg ? LoadJpeg : LoadPng)(buffer, image);
}
} // namespace

bool LoadBmp(QIODevice& device, CImage& image)
{
    SBmpHeader header;
    if (!ParseBmpHeader(device.peek(kBmpHeadBytes), header))
        return false;
    if (header.eCompression == EBmpCompression::Jpeg || header.eCompression == EBmpCompression::Png)
        return LoadEmbedded(device, header, image);
    if (header.nBits < 1 || header.nBits > 32)
        return false;
    const bool bPlain = IsPlain(header);
    SExpectedImage expected;
    expected.nChannels = ChannelsOf(header);
    expected.eFormat = header.nBits <= 8         ? QImage::Format_Indexed8
                       : expected.nChannels == 4 ? QImage::Format_ARGB32
                                                 : QImage::Format_RGB32;
    const int nDecoderBytes = bPlain ? 0 : QImage::toPixelFormat(expected.eFormat).bitsPerPixel() / 8;
    if (!FitsDecodeLimit(header.nWidth, header.nHeight, expected.nChannels, nDecoderBytes) ||
        !CanHoldBmpPixels(header, device.size() - header.nPixels))
        return false;
    if (bPlain)
        return ReadPlainRows(device, header, image);
    expected.nWidth = static_cast<int>(header.nWidth);
    expected.nHeight = static_cast<int>(header.nHeight);
    return ReadWithQt(device, "bmp", expected, image);
}

} // namespace Vantor::Algorithms
