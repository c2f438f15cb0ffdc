// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/file/TiffLacks_p.h>

#include <cstdint>
#include <vector>

namespace Vantor::Algorithms
{

namespace
{
/// The head of a JPEG stream ends within so many bytes, unless it is full of comments.
constexpr tmsize_t kHeadBytes = 65536;
constexpr unsigned char kMarker = 0xff;
constexpr unsigned char kStartOfImage = 0xd8;
constexpr unsigned char kLosslessFrame = 0xc3;
constexpr unsigned char kStartOfScan = 0xda;

std::vector<unsigned char> HeadOfFirstPiece(TIFF* pTiff)
{
    std::vector<unsigned char> vctHead(static_cast<std::size_t>(kHeadBytes));
    const tmsize_t nRead =
        (TIFFIsTiled(pTiff) != 0 ? TIFFReadRawTile : TIFFReadRawStrip)(pTiff, 0, vctHead.data(), kHeadBytes);
    vctHead.resize(nRead > 0 ? static_cast<std::size_t>(nRead) : 0);
    return vctHead;
}

/// Goes from segment to segment of a JPEG stream until its frame is known.
bool IsLosslessJpeg(const std::vector<unsigned char>& vctHead)
{
    if (vctHead.size() < 2 || vctHead[0] != kMarker || vctHead[1] != kStartOfImage)
        return false;
    std::size_t nPos = 2;
    while (nPos + 4 <= vctHead.size() && vctHead[nPos] == kMarker && vctHead[nPos + 1] != kStartOfScan) {
        if (vctHead[nPos + 1] == kLosslessFrame)
            return true;
        nPos += 2U + (std::size_t(vctHead[nPos + 2]) << 8) + vctHead[nPos + 3];
    }
    return false;
}

std::string NameOfTheLacking(TIFF* pTiff)
{
    std::uint16_t nCompression = COMPRESSION_NONE;
    std::uint16_t nBits = 1;
    TIFFGetFieldDefaulted(pTiff, TIFFTAG_COMPRESSION, &nCompression);
    TIFFGetFieldDefaulted(pTiff, TIFFTAG_BITSPERSAMPLE, &nBits);
    if (TIFFIsCODECConfigured(nCompression) != 1)
        return "method " + std::to_string(nCompression);
    if (nCompression == COMPRESSION_THUNDERSCAN)
        return "ThunderScan";
    if (nCompression == COMPRESSION_JPEG && nBits == 12)
        return "JPEG of 12 bits";
    if (nCompression == COMPRESSION_JPEG && IsLosslessJpeg(HeadOfFirstPiece(pTiff)))
        return "lossless JPEG";
    return {};
}
} // namespace

std::string WhatTheCodecLacks(TIFF* pTiff)
{
    const std::string strName = NameOfTheLacking(pTiff);
    return strName.empty()
               ? strName
               : "The TIFF file is compressed by " + strName + ", which the library for TIFF lacks.";
}

} // namespace Vantor::Algorithms
