// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QByteArray>
#include <QtGlobal>

#include <array>

namespace Vantor::Algorithms
{

constexpr int kBmpFileHeaderBytes = 14;
constexpr int kBmpCoreHeaderBytes = 12;
constexpr int kBmpInfoHeaderBytes = 40;
constexpr int kBmpV2HeaderBytes = 52;
constexpr int kBmpV3HeaderBytes = 56; // the first with an alpha mask
constexpr int kBmpV4HeaderBytes = 108;
constexpr int kBmpPaletteEntries = 256;
constexpr int kBmpPaletteBytes = 4 * kBmpPaletteEntries;
constexpr quint32 kBmpRedMask = 0x00ff0000;
constexpr quint32 kBmpGreenMask = 0x0000ff00;
constexpr quint32 kBmpBlueMask = 0x000000ff;
constexpr quint32 kBmpAlphaMask = 0xff000000;

enum class EBmpCompression : quint32 {
    None = 0,
    RunLength8 = 1,
    RunLength4 = 2,
    BitFields = 3,
    Jpeg = 4,
    Png = 5,
    // They have no number of their own: a header of OS/2 uses 3 and 4 for them.
    Huffman,
    RunLength24,
    Unknown
};

/// What the headers of a BMP file claim; nothing is checked yet.
struct SBmpHeader {
    qint64 nWidth = 0;
    qint64 nHeight = 0;
    bool bTopDown = false;
    int nBits = 0; ///< per pixel
    EBmpCompression eCompression = EBmpCompression::None;
    quint32 nCompression = 0;                        ///< the number in the file
    std::array<quint32, 4> masks{};                  ///< red, green, blue, alpha (0: none) of 16 and 32 bits
    bool bUsualMasks = false;                        ///< bytes in the order B, G, R, A
    std::array<quint32, kBmpPaletteEntries> palette; ///< 0xRRGGBB, black where the file has no entry
    bool bGreyPalette = false; ///< 256 entries, entry i is the grey i: how grey is written in this format
    qint64 nPixels = 0;        ///< offset of the pixels in the file
    int nPerMetreX = 0;        ///< pixels; 0 or less: the file does not say
    int nPerMetreY = 0;
};

/// Reads the headers from the first bytes of a file (kBmpHeadBytes, or all that there are). False when the
/// file ends in them, or for a header of a length that does not exist.
constexpr int kBmpHeadBytes = kBmpFileHeaderBytes + 2 * kBmpV4HeaderBytes + kBmpPaletteBytes;
bool ParseBmpHeader(const QByteArray& head, SBmpHeader& header);

/// Bytes of a row in the file.
qint64 BmpStride(qint64 nWidth, int nBits);

/// Whether this many bytes after the headers can hold the pixels that they claim.
bool CanHoldBmpPixels(const SBmpHeader& header, qint64 nBytes);

/// Turns a row of B, G, R (and a fourth byte) into R, G, B (and A) or back; pFrom may be pTo.
void ReorderBmpRow(const unsigned char* pFrom, int nFromBytes, unsigned char* pTo, int nToBytes, int nWidth);

} // namespace Vantor::Algorithms
