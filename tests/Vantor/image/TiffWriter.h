// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QString>
#include <QtTest/QtTest>
#include <tiffio.h>
#include <vector>

/// TIFF files made by the tests.
namespace TiffWriter
{
/// What a TIFF file of one strip is written with.
struct STiff {
    int nWidth = 1;
    int nHeight = 1;
    int nSamples = 1;
    int nBits = 8;
    int nFormat = SAMPLEFORMAT_UINT;
    int nPhotometric = PHOTOMETRIC_MINISBLACK; ///< -1: not said
    int nOrientation = ORIENTATION_TOPLEFT;
    int nExtra = -1; ///< kind of the last sample, -1 for none
    int nCompression = COMPRESSION_NONE;
    int nTile = 0;                     ///< side of a tile, which the image fits into; 0 for a strip
    bool bPlanar = false;              ///< a strip for each sample, one behind the other
    const char* pMode = "w";           ///< "wb" for the other order of bytes, "w8" for 64-bit offsets
    std::vector<quint16> vctMap = {};  ///< reds, then greens, then blues of a palette
    std::vector<double> vctWhite = {}; ///< x and y of the white point
};

inline void SetTags(TIFF* pTiff, const STiff& what)
{
    TIFFSetField(pTiff, TIFFTAG_IMAGEWIDTH, what.nWidth);
    TIFFSetField(pTiff, TIFFTAG_IMAGELENGTH, what.nHeight);
    TIFFSetField(pTiff, TIFFTAG_SAMPLESPERPIXEL, what.nSamples);
    TIFFSetField(pTiff, TIFFTAG_BITSPERSAMPLE, what.nBits);
    TIFFSetField(pTiff, TIFFTAG_SAMPLEFORMAT, what.nFormat);
    TIFFSetField(pTiff, TIFFTAG_ORIENTATION, what.nOrientation);
    TIFFSetField(pTiff, TIFFTAG_PLANARCONFIG, what.bPlanar ? PLANARCONFIG_SEPARATE : PLANARCONFIG_CONTIG);
    if (what.nPhotometric >= 0)
        TIFFSetField(pTiff, TIFFTAG_PHOTOMETRIC, what.nPhotometric);
    if (what.nExtra >= 0) {
        const auto nExtra = static_cast<uint16_t>(what.nExtra);
        TIFFSetField(pTiff, TIFFTAG_EXTRASAMPLES, 1, &nExtra);
    }
    TIFFSetField(pTiff, TIFFTAG_COMPRESSION, what.nCompression);
    if (what.nPhotometric == PHOTOMETRIC_YCBCR)
        TIFFSetField(pTiff, TIFFTAG_YCBCRSUBSAMPLING, 1, 1);
    if (what.nTile > 0) {
        TIFFSetField(pTiff, TIFFTAG_TILEWIDTH, what.nTile);
        TIFFSetField(pTiff, TIFFTAG_TILELENGTH, what.nTile);
    }
    if (!what.vctMap.empty()) {
        const std::size_t nEntries = what.vctMap.size() / 3;
        TIFFSetField(pTiff, TIFFTAG_COLORMAP, what.vctMap.data(), what.vctMap.data() + nEntries,
                     what.vctMap.data() + 2 * nEntries);
    }
    if (!what.vctWhite.empty()) {
        const float white[2] = {static_cast<float>(what.vctWhite[0]), static_cast<float>(what.vctWhite[1])};
        TIFFSetField(pTiff, TIFFTAG_WHITEPOINT, white);
    }
}

/// @param samples  plane after plane when it is planar
template <class T> void WriteTiff(const QString& path, const STiff& what, std::vector<T> samples)
{
    TIFF* pTiff = TIFFOpen(path.toUtf8().constData(), what.pMode);
    QVERIFY(pTiff);
    SetTags(pTiff, what);
    const std::size_t nPlanes = what.bPlanar ? static_cast<std::size_t>(what.nSamples) : 1;
    const std::size_t nPlane = samples.size() / nPlanes;
    for (std::size_t i = 0; i < nPlanes; ++i) {
        const auto nBytes = static_cast<tmsize_t>(nPlane * sizeof(T));
        (what.nTile > 0 ? TIFFWriteEncodedTile : TIFFWriteEncodedStrip)(pTiff, static_cast<uint32_t>(i),
                                                                        samples.data() + i * nPlane, nBytes);
    }
    TIFFClose(pTiff);
}

/// Of the samples of pixels, pixel after pixel: the order of a planar file.
template <class T> std::vector<T> InPlanes(const std::vector<T>& samples, int nSamples)
{
    const auto nStep = static_cast<std::size_t>(nSamples);
    std::vector<T> planes;
    for (std::size_t s = 0; s < nStep; ++s)
        for (std::size_t i = s; i < samples.size(); i += nStep)
            planes.push_back(samples[i]);
    return planes;
}

/// The upper bits first, without gaps, as samples of odd widths lie in a row.
inline std::vector<unsigned char> Packed(const std::vector<quint32>& values, int nBits)
{
    std::vector<unsigned char> bytes((values.size() * static_cast<std::size_t>(nBits) + 7) / 8);
    std::size_t nAt = 0;
    for (const quint32 value : values)
        for (int nBit = nBits - 1; nBit >= 0; --nBit, ++nAt)
            if ((value >> nBit & 1) != 0)
                bytes[nAt / 8] = static_cast<unsigned char>(bytes[nAt / 8] | 0x80U >> nAt % 8);
    return bytes;
}
} // namespace TiffWriter
