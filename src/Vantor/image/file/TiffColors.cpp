// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/file/TiffColors_p.h>

#include <Vantor/image/CImage.h>
#include <Vantor/image/file/DecodeBounds_p.h>
#include <Vantor/image/file/Samples_p.h>

#include <algorithm>
#include <array>
#include <cstring>

namespace Vantor::Algorithms
{

namespace
{
struct SRgb {
    unsigned char nRed = 0;
    unsigned char nGreen = 0;
    unsigned char nBlue = 0;
};
using Palette = std::array<SRgb, 256>;

/// Calls convert(from, to) for every pixel of two images of the same size.
template <class TConvert> void ForPixels(const CImage& from, CImage& to, TConvert convert)
{
    const int nWidth = from.GetWidth();
    const int nFrom = from.GetChannel();
    const int nTo = to.GetChannel();
    for (int y = 0; y < from.GetHeight(); ++y) {
        const unsigned char* pFrom = from.GetRows()[y];
        unsigned char* pTo = to.GetRows()[y];
        for (int x = 0; x < nWidth; ++x, pFrom += nFrom, pTo += nTo)
            convert(pFrom, pTo);
    }
}

/// round(v 255 / alpha) of a sample that was multiplied by its alpha.
unsigned char Straighten(unsigned char nValue, unsigned char nAlpha)
{
    if (nAlpha == 0)
        return 0;
    return static_cast<unsigned char>(std::min(255, (nValue * 255 + nAlpha / 2) / nAlpha));
}

void StraightenPixel(unsigned char* pPixel)
{
    for (int c = 0; c < 3; ++c)
        pPixel[c] = Straighten(pPixel[c], pPixel[3]);
}

/// The colour map of the file, false when there is none. Old writers filled it with 8-bit values.
bool ReadPalette(TIFF* pTiff, Palette& palette)
{
    std::uint16_t nBits = 0;
    std::uint16_t* pMaps[3] = {};
    if (TIFFGetFieldDefaulted(pTiff, TIFFTAG_BITSPERSAMPLE, &nBits) != 1 || nBits > 8 ||
        TIFFGetField(pTiff, TIFFTAG_COLORMAP, &pMaps[0], &pMaps[1], &pMaps[2]) != 1)
        return false;
    const std::size_t nEntries = std::size_t(1) << nBits;
    std::uint16_t nMax = 0;
    for (const std::uint16_t* pMap : pMaps)
        nMax = std::max(nMax, *std::max_element(pMap, pMap + nEntries));
    const auto scale = [nMax](std::uint16_t v) {
        return nMax < 256 ? static_cast<unsigned char>(v) : Scale16To8(v);
    };
    for (std::size_t i = 0; i < nEntries; ++i)
        palette[i] = SRgb{scale(pMaps[0][i]), scale(pMaps[1][i]), scale(pMaps[2][i])};
    return true;
}

void ExpandGreyAlpha(const CImage& samples, bool bPremultiplied, CImage& image)
{
    ForPixels(samples, image, [bPremultiplied](const unsigned char* pFrom, unsigned char* pTo) {
        std::memset(pTo, bPremultiplied ? Straighten(pFrom[0], pFrom[1]) : pFrom[0], 3);
        pTo[3] = pFrom[1];
    });
}

void ExpandCmyk(const CImage& samples, CImage& image)
{
    ForPixels(samples, image, [](const unsigned char* pFrom, unsigned char* pTo) {
        const int nWhite = 255 - pFrom[3];
        for (int c = 0; c < 3; ++c)
            pTo[c] = static_cast<unsigned char>(((255 - pFrom[c]) * nWhite + 127) / 255);
    });
}

void ExpandPalette(const CImage& samples, const Palette& palette, CImage& image)
{
    ForPixels(samples, image, [&palette](const unsigned char* pFrom, unsigned char* pTo) {
        const SRgb& color = palette[*pFrom];
        pTo[0] = color.nRed;
        pTo[1] = color.nGreen;
        pTo[2] = color.nBlue;
    });
}
} // namespace

int StoredChannels(ETiffColors eColors)
{
    switch (eColors) {
    case ETiffColors::GreyAlpha:
    case ETiffColors::GreyPremultiplied:
        return 2;
    case ETiffColors::Rgb:
        return 3;
    case ETiffColors::Rgba:
    case ETiffColors::RgbaPremultiplied:
    case ETiffColors::Cmyk:
        return 4;
    default:
        return 1;
    }
}

int ResultChannels(ETiffColors eColors)
{
    if (eColors == ETiffColors::GreyAlpha || eColors == ETiffColors::GreyPremultiplied)
        return 4;
    return eColors == ETiffColors::Palette || eColors == ETiffColors::Cmyk ? 3 : StoredChannels(eColors);
}

bool IsInPlace(ETiffColors eColors)
{
    return eColors != ETiffColors::Cmyk && StoredChannels(eColors) == ResultChannels(eColors);
}

void AdjustInPlace(ETiffColors eColors, CImage& image)
{
    if (eColors == ETiffColors::WhiteIsZero)
        ForPixels(image, image, [](const unsigned char* pFrom, unsigned char* pTo) {
            *pTo = static_cast<unsigned char>(255 - *pFrom);
        });
    else if (eColors == ETiffColors::RgbaPremultiplied)
        ForPixels(image, image, [](const unsigned char*, unsigned char* pTo) { StraightenPixel(pTo); });
}

bool ExpandColors(TIFF* pTiff, ETiffColors eColors, const CImage& samples, CImage& image)
{
    Palette palette;
    if (eColors == ETiffColors::Palette && !ReadPalette(pTiff, palette))
        return false;
    if (image.Create(samples.GetWidth(), samples.GetHeight(), ResultChannels(eColors), 8,
                     EImageType::Interleaved, kRowAlignment) != 0)
        return false;
    if (eColors == ETiffColors::Palette)
        ExpandPalette(samples, palette, image);
    else if (eColors == ETiffColors::Cmyk)
        ExpandCmyk(samples, image);
    else
        ExpandGreyAlpha(samples, eColors == ETiffColors::GreyPremultiplied, image);
    return true;
}

} // namespace Vantor::Algorithms
