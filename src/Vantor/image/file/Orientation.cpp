// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/file/Orientation_p.h>

#include <Vantor/image/CImage.h>
#include <Vantor/image/file/DecodeBounds_p.h>

#include <QtEndian>

#include <cstring>

namespace Vantor::Algorithms
{

namespace
{
/// The tag's values from 1 on: which sides the first row and the first column stand for.
enum EOrientation {
    TopLeft = 1,
    TopRight,
    BottomRight,
    BottomLeft,
    LeftTop,
    RightTop,
    RightBottom,
    LeftBottom
};

constexpr std::size_t kHeadBytes = 8; // byte order, a magic number, the place of the first directory
constexpr std::size_t kCountBytes = 2;
constexpr std::size_t kEntryBytes = 12; // tag, type, count and value
constexpr quint16 kOrientationTag = 0x112;
constexpr quint16 kShortType = 3;

/// Numbers of 16 and 32 bits in the byte order of the data.
struct SExifReader {
    const unsigned char* pBytes;
    bool bLittle;

    quint16 Word(std::size_t i) const
    {
        return bLittle ? qFromLittleEndian<quint16>(pBytes + i) : qFromBigEndian<quint16>(pBytes + i);
    }
    quint32 Long(std::size_t i) const
    {
        return bLittle ? qFromLittleEndian<quint32>(pBytes + i) : qFromBigEndian<quint32>(pBytes + i);
    }
};
} // namespace

int FindExifOrientation(const unsigned char* pExif, std::size_t nBytes)
{
    if (nBytes < kHeadBytes || (std::memcmp(pExif, "II*\0", 4) != 0 && std::memcmp(pExif, "MM\0*", 4) != 0))
        return TopLeft;
    const SExifReader exif{pExif, pExif[0] == 'I'};
    const std::size_t nDirectory = exif.Long(4);
    if (nDirectory > nBytes - kCountBytes)
        return TopLeft;
    std::size_t nEntry = nDirectory + kCountBytes;
    for (int n = exif.Word(nDirectory); n > 0 && nEntry + kEntryBytes <= nBytes; --n, nEntry += kEntryBytes) {
        if (exif.Word(nEntry) != kOrientationTag)
            continue;
        const int nValue = exif.Word(nEntry + 8);
        const bool bGood = exif.Word(nEntry + 2) == kShortType && exif.Long(nEntry + 4) == 1;
        return bGood && nValue >= TopLeft && nValue <= LeftBottom ? nValue : TopLeft;
    }
    return TopLeft;
}

bool Reorient(const CImage& from, int nOrientation, CImage& image)
{
    const int nLastX = from.GetWidth() - 1;
    const int nLastY = from.GetHeight() - 1;
    const bool bSwap = nOrientation >= LeftTop;
    const bool bFlipX = nOrientation == TopRight || nOrientation == BottomRight ||
                        nOrientation == RightBottom || nOrientation == LeftBottom;
    const bool bFlipY = nOrientation == BottomRight || nOrientation == BottomLeft ||
                        nOrientation == RightTop || nOrientation == RightBottom;
    const int nChannels = from.GetChannel();
    if (image.Create(bSwap ? nLastY + 1 : nLastX + 1, bSwap ? nLastX + 1 : nLastY + 1, nChannels, 8,
                     EImageType::Interleaved, kRowAlignment) != 0)
        return false;
    const unsigned char* const* pRows = from.GetRows();
    const int nWidth = image.GetWidth();
    for (int y = 0; y < image.GetHeight(); ++y) {
        unsigned char* pTo = image.GetRows()[y];
        for (int x = 0; x < nWidth; ++x, pTo += nChannels) {
            const int nFromX = bSwap ? y : x;
            const int nFromY = bSwap ? x : y;
            const unsigned char* pFrom =
                pRows[bFlipY ? nLastY - nFromY : nFromY] + (bFlipX ? nLastX - nFromX : nFromX) * nChannels;
            std::memcpy(pTo, pFrom, static_cast<std::size_t>(nChannels));
        }
    }
    return true;
}

} // namespace Vantor::Algorithms
