// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/CImage.h>
#include <Vantor/image/file/BmpHeader_p.h>
#include <Vantor/image/file/DecodeBounds_p.h>
#include <Vantor/image/file/ImageFormats_p.h>
#include <Vantor/image/file/QtImage_p.h>

#include <QBuffer>
#include <QByteArray>
#include <QtAlgorithms>
#include <QtEndian>

#include <algorithm>
#include <array>

namespace Vantor::Algorithms
{

namespace
{
int ChannelsOf(const SBmpHeader& header)
{
    if (header.bGreyPalette)
        return 1;
    return header.masks[3] != 0 ? 4 : 3;
}

/// Rows that follow from the header: palettes, whole bytes per channel, masks.
bool IsPlain(const SBmpHeader& header)
{
    if (header.eCompression == EBmpCompression::BitFields)
        return header.nBits == 16 || header.nBits == 32;
    switch (header.nBits) {
    case 1:
    case 2:
    case 4:
    case 8:
    case 16:
    case 24:
    case 32:
        return header.eCompression == EBmpCompression::None;
    default:
        return false;
    }
}

/// Scales what each mask selects to 8 bits.
void ExpandMasks(const SBmpHeader& header, const unsigned char* pFrom, unsigned char* pTo, int nChannels,
                 int nWidth)
{
    std::array<int, 4> shifts{};
    std::array<quint32, 4> maxima{};
    for (std::size_t c = 0; c < shifts.size(); ++c) {
        shifts[c] = header.masks[c] != 0 ? static_cast<int>(qCountTrailingZeroBits(header.masks[c])) : 0;
        maxima[c] = std::max(1U, header.masks[c] >> shifts[c]);
    }
    for (int x = 0; x < nWidth; ++x, pFrom += header.nBits / 8) {
        const quint32 nPixel =
            header.nBits == 16 ? qFromLittleEndian<quint16>(pFrom) : qFromLittleEndian<quint32>(pFrom);
        for (std::size_t c = 0; c < static_cast<std::size_t>(nChannels); ++c) {
            const quint64 nValue = (nPixel & header.masks[c]) >> shifts[c];
            *pTo++ = static_cast<unsigned char>((nValue * 255 + maxima[c] / 2) / maxima[c]);
        }
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
    const bool bInPlace = header.nBits == 8 * nChannels && (header.nBits <= 24 || header.bUsualMasks);
    QByteArray row(bInPlace ? 0 : static_cast<int>(nStride), Qt::Uninitialized);
    for (int i = 0; i < nHeight; ++i) {
        unsigned char* pTo = image.GetRows()[header.bTopDown ? i : nHeight - 1 - i];
        unsigned char* pFrom = bInPlace ? pTo : reinterpret_cast<unsigned char*>(row.data());
        if (device.read(reinterpret_cast<char*>(pFrom), nStride) < nUsed)
            return false;
        if (header.nBits == 24 || (header.nBits == 32 && header.bUsualMasks))
            ReorderBmpRow(pFrom, header.nBits / 8, pTo, nChannels, nWidth);
        else if (header.nBits > 8)
            ExpandMasks(header, pFrom, pTo, nChannels, nWidth);
        else if (nChannels == 3)
            ExpandIndexes(header, pFrom, pTo, nWidth);
    }
    return true;
}

/// A JPEG or PNG file in the place of the pixels.
bool LoadEmbedded(QIODevice& device, const SBmpHeader& header, CImage& image, Notes& notes)
{
    if (!device.seek(header.nPixels))
        return false;
    QByteArray content = device.readAll();
    QBuffer buffer(&content);
    return buffer.open(QIODevice::ReadOnly) &&
           (header.eCompression == EBmpCompression::Jpeg ? LoadJpeg : LoadPng)(buffer, image, notes)
               .IsSuccess();
}

bool DecodeBmpFile(QIODevice& device, CImage& image, Notes& notes)
{
    SBmpHeader header;
    if (!ParseBmpHeader(device.peek(kBmpHeadBytes), header))
        return false;
    if (header.eCompression == EBmpCompression::Jpeg || header.eCompression == EBmpCompression::Png)
        return LoadEmbedded(device, header, image, notes);
    const bool bPlain = IsPlain(header);
    if (!bPlain && header.nBits != 4 && header.nBits != 8)
        return false;
    const int nDecoderBytes = bPlain ? 0 : 1;
    const int nChannels = ChannelsOf(header);
    if (!FitsDecodeLimit(header.nWidth, header.nHeight, nChannels, nDecoderBytes) ||
        !CanHoldBmpPixels(header, device.size() - header.nPixels))
        return false;
    if (bPlain)
        return ReadPlainRows(device, header, image);
    SExpectedImage expected; // run lengths
    expected.eFormat = QImage::Format_Indexed8;
    expected.nChannels = nChannels;
    expected.nWidth = static_cast<int>(header.nWidth);
    expected.nHeight = static_cast<int>(header.nHeight);
    return ReadWithQt(device, "bmp", expected, image);
}
} // namespace

CResult LoadBmp(QIODevice& device, CImage& image, Notes& notes)
{
    return DecodeBmpFile(device, image, notes) ? CResult::Success() : Unreadable("BMP");
}

} // namespace Vantor::Algorithms
