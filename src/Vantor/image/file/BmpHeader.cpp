// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/file/BmpHeader_p.h>

#include <QtEndian>

#include <algorithm>
#include <cstdlib>

namespace Vantor::Algorithms
{

namespace
{
/// A run of two bytes covers at most 255 pixels.
constexpr qint64 kMaxPixelsPerRunByte = 128;
/// Deliberate: this many pixels need no such account, for run lengths may skip most of a picture.
constexpr qint64 kFreePixels = 2 << 20;
constexpr quint32 kOs2LeastBytes = 16;
constexpr quint32 kOs2MostBytes = 64;
constexpr int kMaskOffset = 54;

/// @{
/// A field of the header; fields that a short header lacks are 0.
quint32 LongAt(const QByteArray& head, int nOffset)
{
    return nOffset + 4 <= head.size() ? qFromLittleEndian<quint32>(head.constData() + nOffset) : 0;
}

int WordAt(const QByteArray& head, int nOffset)
{
    return nOffset + 2 <= head.size() ? qFromLittleEndian<quint16>(head.constData() + nOffset) : 0;
}
/// @}

/// Reads the palette entries that lie before the pixels.
void ParsePalette(const QByteArray& head, qint64 nStart, int nEntryBytes, qint64 nEntries, SBmpHeader& header)
{
    const qint64 nEnd = std::min<qint64>(head.size(), header.nPixels);
    const qint64 nThere = std::min({nEntries, (nEnd - nStart) / nEntryBytes, qint64(kBmpPaletteEntries)});
    header.bGreyPalette = header.nBits == 8 && nThere == kBmpPaletteEntries;
    for (qint64 i = 0; i < nThere; ++i) {
        const auto* p = reinterpret_cast<const unsigned char*>(head.constData()) + nStart + i * nEntryBytes;
        const quint32 nColor = static_cast<quint32>(p[2]) << 16 | static_cast<quint32>(p[1]) << 8 | p[0];
        header.palette[static_cast<std::size_t>(i)] = nColor;
        header.bGreyPalette &= nColor == static_cast<quint32>(i) * 0x010101U;
    }
}

/// Reads the masks of the file, or sets the default ones of 16 and 32 bits. False when the file ends in them.
bool ParseMasks(const QByteArray& head, bool bAlpha, SBmpHeader& header)
{
    if (header.eCompression == EBmpCompression::BitFields) {
        const std::size_t nMasks = bAlpha ? 4 : 3;
        if (head.size() < kMaskOffset + 4 * static_cast<int>(nMasks))
            return false;
        for (std::size_t i = 0; i < nMasks; ++i)
            header.masks[i] = LongAt(head, kMaskOffset + 4 * static_cast<int>(i));
    } else {
        header.masks = header.nBits == 16
                           ? std::array<quint32, 4>{0x7c00, 0x03e0, 0x001f, 0}
                           : std::array<quint32, 4>{kBmpRedMask, kBmpGreenMask, kBmpBlueMask, 0};
    }
    header.bUsualMasks = header.masks[0] == kBmpRedMask && header.masks[1] == kBmpGreenMask &&
                         header.masks[2] == kBmpBlueMask &&
                         (header.masks[3] == 0 || header.masks[3] == kBmpAlphaMask);
    return true;
}

/// The meaning of the compression's number, which differs between the two families of headers.
EBmpCompression CompressionOf(quint32 nNumber, quint32 nHeaderBytes, int nBits)
{
    constexpr quint32 kHuffman = 3;
    constexpr quint32 kRunLength24 = 4;
    const bool bOs2 = nHeaderBytes <= kOs2MostBytes && nHeaderBytes != kBmpInfoHeaderBytes &&
                      nHeaderBytes != kBmpV2HeaderBytes && nHeaderBytes != kBmpV3HeaderBytes;
    if (nNumber == kHuffman && nBits == 1) // masks of one bit do not exist
        return EBmpCompression::Huffman;
    if (bOs2 && nNumber == kRunLength24)
        return EBmpCompression::RunLength24;
    const auto nLast = static_cast<quint32>(bOs2 ? EBmpCompression::RunLength4 : EBmpCompression::Png);
    return nNumber <= nLast ? static_cast<EBmpCompression>(nNumber) : EBmpCompression::Unknown;
}

/// The oldest header: sizes of 16 bits, entries of three bytes.
bool ParseCore(const QByteArray& head, qint64 nPalette, SBmpHeader& header)
{
    header.nWidth = WordAt(head, 18);
    header.nHeight = WordAt(head, 20);
    header.nBits = WordAt(head, 24);
    if (header.nBits > 8)
        return ParseMasks(head, false, header);
    ParsePalette(head, nPalette, 3, 1LL << header.nBits, header);
    return true;
}
} // namespace

bool ParseBmpHeader(const QByteArray& head, SBmpHeader& header)
{
    constexpr quint32 kAlphaBitFields = 6; // as BitFields, with a mask for alpha behind a header without
    header.palette.fill(0);
    const quint32 nHeaderBytes = LongAt(head, kBmpFileHeaderBytes);
    const qint64 nPalette = kBmpFileHeaderBytes + static_cast<qint64>(nHeaderBytes);
    if (nHeaderBytes < kBmpCoreHeaderBytes ||
        head.size() < kBmpFileHeaderBytes + std::min<qint64>(nHeaderBytes, kBmpInfoHeaderBytes))
        return false;
    header.nPixels = std::max<qint64>(LongAt(head, 10), nPalette);
    if (nHeaderBytes == kBmpCoreHeaderBytes)
        return ParseCore(head, nPalette, header);
    if (nHeaderBytes < kOs2LeastBytes)
        return false;
    const QByteArray fields = head.left(static_cast<int>(std::min<qint64>(nPalette, head.size())));
    header.nWidth = static_cast<qint32>(LongAt(fields, 18));
    const qint64 nHeight = static_cast<qint32>(LongAt(fields, 22));
    header.bTopDown = nHeight < 0;
    header.nHeight = std::abs(nHeight);
    header.nBits = WordAt(fields, 28);
    header.nCompression = LongAt(fields, 30);
    header.nPerMetreX = static_cast<qint32>(LongAt(fields, 38));
    header.nPerMetreY = static_cast<qint32>(LongAt(fields, 42));
    const bool bAlpha = header.nCompression == kAlphaBitFields;
    header.eCompression =
        bAlpha ? EBmpCompression::BitFields : CompressionOf(header.nCompression, nHeaderBytes, header.nBits);
    if (header.nBits > 8)
        return ParseMasks(head, bAlpha || nHeaderBytes >= kBmpV3HeaderBytes, header);
    const qint64 nColorsUsed = LongAt(fields, 46);
    ParsePalette(head, nPalette, 4, nColorsUsed == 0 ? 1LL << header.nBits : nColorsUsed, header);
    return true;
}

qint64 BmpStride(qint64 nWidth, int nBits)
{
    return (nWidth * nBits + 31) / 32 * 4;
}

bool CanHoldBmpPixels(const SBmpHeader& header, qint64 nBytes)
{
    switch (header.eCompression) {
    case EBmpCompression::None:
    case EBmpCompression::BitFields: // the padding of the last row may be missing
        return (header.nHeight - 1) * BmpStride(header.nWidth, header.nBits) +
                   (header.nWidth * header.nBits + 7) / 8 <=
               nBytes;
    case EBmpCompression::RunLength8:
    case EBmpCompression::RunLength4:
    case EBmpCompression::RunLength24:
        return header.nWidth * header.nHeight <= kFreePixels + nBytes * kMaxPixelsPerRunByte;
    default: // the decoder checks it
        return true;
    }
}

void ReorderBmpRow(const unsigned char* pFrom, int nFromBytes, unsigned char* pTo, int nToBytes, int nWidth)
{
    for (int x = 0; x < nWidth; ++x, pFrom += nFromBytes, pTo += nToBytes) {
        const unsigned char nFirst = pFrom[0];
        const unsigned char nThird = pFrom[2];
        pTo[1] = pFrom[1];
        if (nToBytes == 4)
            pTo[3] = pFrom[3];
        pTo[0] = nThird;
        pTo[2] = nFirst;
    }
}

} // namespace Vantor::Algorithms
