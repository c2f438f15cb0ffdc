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
constexpr int kBytesUpToMasks = 70;

quint32 LongAt(const QByteArray& head, qint64 nOffset)
{
    return qFromLittleEndian<quint32>(head.constData() + nOffset);
}

int WordAt(const QByteArray& head, qint64 nOffset)
{
    return qFromLittleEndian<quint16>(head.constData() + nOffset);
}

/// Takes the entries that lie before the pixels.
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

/// The masks of the file, or those that 16 and 32 bits have without any.
void ParseMasks(const QByteArray& head, quint32 nHeaderBytes, SBmpHeader& header)
{
    if (header.eCompression == EBmpCompression::BitFields) {
        for (std::size_t i = 0; i < 3; ++i)
            header.masks[i] = LongAt(head, 54 + 4 * static_cast<qint64>(i));
        if (nHeaderBytes >= kBmpV3HeaderBytes)
            header.masks[3] = LongAt(head, 66);
    } else {
        header.masks = header.nBits == 16
                           ? std::array<quint32, 4>{0x7c00, 0x03e0, 0x001f, 0}
                           : std::array<quint32, 4>{kBmpRedMask, kBmpGreenMask, kBmpBlueMask, 0};
    }
    header.bUsualMasks = header.masks[0] == kBmpRedMask && header.masks[1] == kBmpGreenMask &&
                         header.masks[2] == kBmpBlueMask &&
                         (header.masks[3] == 0 || header.masks[3] == kBmpAlphaMask);
}
} // namespace

bool ParseBmpHeader(const QByteArray& head, SBmpHeader& header)
{
    header.palette.fill(0);
    if (head.size() < kBmpFileHeaderBytes + kBmpCoreHeaderBytes)
        return false;
    const quint32 nHeaderBytes = LongAt(head, 14);
    const qint64 nPalette = kBmpFileHeaderBytes + static_cast<qint64>(nHeaderBytes);
    header.nPixels = std::max<qint64>(LongAt(head, 10), nPalette);
    if (nHeaderBytes == kBmpCoreHeaderBytes) {
        header.nWidth = WordAt(head, 18);
        header.nHeight = WordAt(head, 20);
        header.nBits = WordAt(head, 24);
        if (header.nBits <= 8)
            ParsePalette(head, nPalette, 3, 1LL << header.nBits, header);
        else
            ParseMasks(head, nHeaderBytes, header);
        return true;
    }
    if (nHeaderBytes < kBmpInfoHeaderBytes || head.size() < kBytesUpToMasks)
        return false;
    header.nWidth = static_cast<qint32>(LongAt(head, 18));
    const qint64 nHeight = static_cast<qint32>(LongAt(head, 22));
    header.bTopDown = nHeight < 0;
    header.nHeight = std::abs(nHeight);
    header.nBits = WordAt(head, 28);
    header.eCompression = static_cast<EBmpCompression>(LongAt(head, 30));
    const qint64 nColorsUsed = LongAt(head, 46);
    if (header.nBits > 8)
        ParseMasks(head, nHeaderBytes, header);
    else
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
        return header.nWidth * header.nHeight <= nBytes * kMaxPixelsPerRunByte;
    default:
        return false;
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
