// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/CImage.h>
#include <Vantor/image/ImageMetadata_p.h>
#include <Vantor/image/file/BmpDecoders_p.h>
#include <Vantor/image/file/DecodeBounds_p.h>
#include <Vantor/image/file/Samples_p.h>

#include <QBuffer>
#include <QByteArray>
#include <QtAlgorithms>
#include <QtEndian>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace Vantor::Algorithms
{

namespace
{
constexpr int kFixedPointBits = 64; ///< a pixel of four signed numbers with 13 bits behind the point
constexpr int kFixedPointOne = 1 << 13;

/// Whether there are such pixels.
bool IsKnown(const SBmpHeader& header)
{
    switch (header.eCompression) {
    case EBmpCompression::None:
        return header.nBits == 1 || header.nBits == 2 || header.nBits == 4 || header.nBits == 8 ||
               header.nBits == 16 || header.nBits == 24 || header.nBits == 32 ||
               header.nBits == kFixedPointBits;
    case EBmpCompression::BitFields:
        return header.nBits == 16 || header.nBits == 32;
    case EBmpCompression::RunLength4:
        return header.nBits == 4;
    case EBmpCompression::RunLength8:
        return header.nBits == 8;
    case EBmpCompression::RunLength24:
        return header.nBits == 24;
    case EBmpCompression::Huffman:
        return header.nBits == 1;
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

/// Turns linear light in fixed point into the usual colours; alpha is linear there too.
void ExpandFixedPoint(const unsigned char* pFrom, unsigned char* pTo, int nWidth,
                      const std::vector<unsigned char>& colors)
{
    const auto next = [&pFrom] {
        const int nValue = qFromLittleEndian<qint16>(pFrom);
        pFrom += 2;
        return std::max(0, std::min(nValue, kFixedPointOne));
    };
    for (int x = 0; x < nWidth; ++x, pTo += 4) {
        for (int c = 2; c >= 0; --c)
            pTo[c] = colors[static_cast<std::size_t>(next())];
        pTo[3] = ScaleFloatTo8(static_cast<double>(next()) / kFixedPointOne);
    }
}

/// The sRGB value of every amount of light from 0 to one.
std::vector<unsigned char> ColorsOfLight()
{
    std::vector<unsigned char> colors;
    for (int i = 0; i <= kFixedPointOne; ++i) {
        const double dLight = static_cast<double>(i) / kFixedPointOne;
        colors.push_back(ScaleFloatTo8(dLight <= 0.0031308 ? 12.92 * dLight
                                                           : 1.055 * std::pow(dLight, 1.0 / 2.4) - 0.055));
    }
    return colors;
}

bool ReadPlainRows(QIODevice& device, const SBmpHeader& header, CImage& image)
{
    const int nWidth = static_cast<int>(header.nWidth);
    const int nHeight = static_cast<int>(header.nHeight);
    const int nChannels = BmpChannels(header);
    const qint64 nStride = BmpStride(nWidth, header.nBits);
    const qint64 nUsed = (static_cast<qint64>(nWidth) * header.nBits + 7) / 8;
    if (image.Create(nWidth, nHeight, nChannels, 8, EImageType::Interleaved, kRowAlignment) != 0)
        return false;
    const bool bInPlace = header.nBits == 8 * nChannels && (header.nBits <= 24 || header.bUsualMasks);
    const std::vector<unsigned char> colors =
        header.nBits == kFixedPointBits ? ColorsOfLight() : std::vector<unsigned char>();
    QByteArray row(bInPlace ? 0 : static_cast<int>(nStride), Qt::Uninitialized);
    for (int i = 0; i < nHeight; ++i) {
        unsigned char* pTo = image.GetRows()[header.bTopDown ? i : nHeight - 1 - i];
        unsigned char* pFrom = bInPlace ? pTo : reinterpret_cast<unsigned char*>(row.data());
        if (device.read(reinterpret_cast<char*>(pFrom), nStride) < nUsed)
            return false;
        if (header.nBits == 24 || (header.nBits == 32 && header.bUsualMasks))
            ReorderBmpRow(pFrom, header.nBits / 8, pTo, nChannels, nWidth);
        else if (header.nBits == kFixedPointBits)
            ExpandFixedPoint(pFrom, pTo, nWidth, colors);
        else if (header.nBits > 8)
            ExpandMasks(header, pFrom, pTo, nChannels, nWidth);
        else if (nChannels == 3)
            ExpandIndexes(header, pFrom, pTo, nWidth);
    }
    return true;
}

/// A JPEG or PNG file instead of pixels.
CResult LoadEmbedded(QIODevice& device, const SBmpHeader& header, CImage& image, SFound& found)
{
    QByteArray content = device.readAll();
    QBuffer buffer(&content);
    if (!buffer.open(QIODevice::ReadOnly))
        return Unreadable("BMP");
    return (header.eCompression == EBmpCompression::Jpeg ? LoadJpeg : LoadPng)(buffer, image, found);
}

/// Whether the kind of pixels is known, and their number within the limits and the file's length.
CResult Check(const SBmpHeader& header, qint64 nBytesOfPixels)
{
    if (!IsKnown(header))
        return CResult::Failure("The BMP file is of an unsupported kind: compression " +
                                std::to_string(header.nCompression) + " with " +
                                std::to_string(header.nBits) + " bits per pixel.");
    if (!FitsDecodeLimit(header.nWidth, header.nHeight, BmpChannels(header), 0))
        return CResult::Failure("The picture of the BMP file is empty or larger than the limit.");
    if (!CanHoldBmpPixels(header, nBytesOfPixels))
        return CResult::Failure("The BMP file is too short for the size that it claims.");
    return CResult::Success();
}
} // namespace

int BmpChannels(const SBmpHeader& header)
{
    if (header.bGreyPalette)
        return 1;
    return header.masks[3] != 0 || header.nBits == kFixedPointBits ? 4 : 3;
}

CResult LoadBmp(QIODevice& device, CImage& image, SFound& found)
{
    SBmpHeader header;
    if (!ParseBmpHeader(device.peek(kBmpHeadBytes), header))
        return CResult::Failure("The BMP file ends in its headers, or they are of an unknown kind.");
    const bool bEmbedded =
        header.eCompression == EBmpCompression::Jpeg || header.eCompression == EBmpCompression::Png;
    CResult checked = bEmbedded ? CResult::Success() : Check(header, device.size() - header.nPixels);
    if (!checked.IsSuccess())
        return checked;
    if (header.nPixels > device.size() || !device.seek(header.nPixels))
        return CResult::Failure("The BMP file ends before its pixels.");
    found.metadata.resolutionX = header.nPerMetreX / kCentimetresPerMetre;
    found.metadata.resolutionY = header.nPerMetreY / kCentimetresPerMetre;
    found.metadata.resolutionUnit = EResolutionUnit::Centimetre;
    switch (header.eCompression) {
    case EBmpCompression::Jpeg:
    case EBmpCompression::Png:
        return LoadEmbedded(device, header, image, found);
    case EBmpCompression::Huffman:
        return ReadBmpHuffman(device, header, image);
    case EBmpCompression::RunLength4:
    case EBmpCompression::RunLength8:
    case EBmpCompression::RunLength24:
        return ReadBmpRunLengths(device, header, image, found.notes);
    default:
        return ReadPlainRows(device, header, image) ? CResult::Success() : Unreadable("BMP");
    }
}

} // namespace Vantor::Algorithms
