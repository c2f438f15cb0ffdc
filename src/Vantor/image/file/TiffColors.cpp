// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/file/TiffColors_p.h>

#include <Vantor/image/CImage.h>
#include <Vantor/image/file/DecodeBounds_p.h>
#include <Vantor/image/file/Samples_p.h>
#include <Vantor/image/file/TiffLab_p.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <type_traits>
#include <vector>

namespace Vantor::Algorithms
{

namespace
{
struct SRgb {
    unsigned char nRed = 0;
    unsigned char nGreen = 0;
    unsigned char nBlue = 0;
};
using Palette = std::vector<SRgb>;

/// Calls convert(from, to) for every pixel.
/// @tparam TFrom  a sample of the first image
template <class TFrom, class TConvert>
void ForPixels(const CImage& from, const STiffColors& colors, CImage& to, TConvert convert)
{
    const int nFrom = StoredChannels(colors);
    const int nWidth = to.GetWidth();
    const int nTo = to.GetChannel();
    for (int y = 0; y < to.GetHeight(); ++y) {
        const auto* pFrom = reinterpret_cast<const TFrom*>(from.GetRows()[y]);
        unsigned char* pTo = to.GetRows()[y];
        for (int x = 0; x < nWidth; ++x, pFrom += nFrom, pTo += nTo)
            convert(pFrom, pTo);
    }
}

constexpr unsigned char To8(unsigned char nValue)
{
    return nValue;
}

constexpr unsigned char To8(std::uint16_t nValue)
{
    return Scale16To8(nValue);
}

/// round(v 255 / alpha) of a sample that was multiplied by its alpha.
template <class T> unsigned char Straighten(T nValue, T nAlpha)
{
    if (nAlpha == 0)
        return 0;
    return static_cast<unsigned char>(std::min(255, (nValue * 255 + nAlpha / 2) / nAlpha));
}

/// A sample of 8 bits, divided by its alpha where it was multiplied.
template <class T> unsigned char ColorOf(ETiffAlpha eAlpha, T nValue, T nAlpha)
{
    return eAlpha == ETiffAlpha::Premultiplied ? Straighten(nValue, nAlpha) : To8(nValue);
}

/// Reads the colour map of the file; false when there is none. Old writers filled it with 8-bit values.
bool ReadPalette(TIFF* pTiff, int nBits, Palette& palette)
{
    std::uint16_t* pMaps[3] = {};
    if (TIFFGetField(pTiff, TIFFTAG_COLORMAP, &pMaps[0], &pMaps[1], &pMaps[2]) != 1)
        return false;
    const std::size_t nEntries = std::size_t(1) << nBits;
    std::uint16_t nMax = 0;
    for (const std::uint16_t* pMap : pMaps)
        nMax = std::max(nMax, *std::max_element(pMap, pMap + nEntries));
    const auto scale = [nMax](std::uint16_t v) {
        return nMax < 256 ? static_cast<unsigned char>(v) : Scale16To8(v);
    };
    for (std::size_t i = 0; i < nEntries; ++i)
        palette.push_back(SRgb{scale(pMaps[0][i]), scale(pMaps[1][i]), scale(pMaps[2][i])});
    return true;
}

template <class T> void ExpandGreyAlpha(const CImage& samples, const STiffColors& colors, CImage& image)
{
    const ETiffAlpha eAlpha = colors.eAlpha;
    ForPixels<T>(samples, colors, image, [eAlpha](const T* pFrom, unsigned char* pTo) {
        std::memset(pTo, ColorOf(eAlpha, pFrom[0], pFrom[1]), 3);
        pTo[3] = To8(pFrom[1]);
    });
}

template <class T> void ExpandRgbAlpha(const CImage& samples, const STiffColors& colors, CImage& image)
{
    const ETiffAlpha eAlpha = colors.eAlpha;
    ForPixels<T>(samples, colors, image, [eAlpha](const T* pFrom, unsigned char* pTo) {
        for (int c = 0; c < 3; ++c)
            pTo[c] = ColorOf(eAlpha, pFrom[c], pFrom[3]);
        pTo[3] = To8(pFrom[3]);
    });
}

template <class T> void ExpandCmyk(const CImage& samples, const STiffColors& colors, CImage& image)
{
    const ETiffAlpha eAlpha = colors.eAlpha;
    ForPixels<T>(samples, colors, image, [eAlpha](const T* pFrom, unsigned char* pTo) {
        const T nAlpha = eAlpha == ETiffAlpha::None ? T(0) : pFrom[4];
        const int nWhite = 255 - ColorOf(eAlpha, pFrom[3], nAlpha);
        for (int c = 0; c < 3; ++c)
            pTo[c] =
                static_cast<unsigned char>(((255 - ColorOf(eAlpha, pFrom[c], nAlpha)) * nWhite + 127) / 255);
        if (eAlpha != ETiffAlpha::None)
            pTo[3] = To8(nAlpha);
    });
}

/// Deliberate: alpha of either kind leaves the colours of the map unchanged, because many pixels share one.
template <class T>
void ExpandPalette(const CImage& samples, const STiffColors& colors, const Palette& palette, CImage& image)
{
    const int nMax = (1 << colors.nBits) - 1;
    const bool bAlpha = colors.eAlpha != ETiffAlpha::None;
    ForPixels<T>(samples, colors, image, [&palette, nMax, bAlpha](const T* pFrom, unsigned char* pTo) {
        const SRgb& color = palette[*pFrom];
        pTo[0] = color.nRed;
        pTo[1] = color.nGreen;
        pTo[2] = color.nBlue;
        if (bAlpha)
            pTo[3] = static_cast<unsigned char>((pFrom[1] * 255 + nMax / 2) / nMax);
    });
}

template <class T>
void ExpandLab(const CImage& samples, const STiffColors& colors, CLabToRgb& converter, CImage& image)
{
    const ETiffAlpha eAlpha = colors.eAlpha;
    using Signed = std::make_signed_t<T>;
    constexpr auto kMax = static_cast<float>(std::numeric_limits<T>::max());
    constexpr auto kUnit = static_cast<float>(sizeof(T) == 1 ? 1 : 256); // of a and b
    ForPixels<T>(samples, colors, image, [eAlpha, &converter](const T* pFrom, unsigned char* pTo) {
        float factor = 1.0F;
        if (eAlpha == ETiffAlpha::Premultiplied)
            factor = pFrom[3] == 0 ? 0.0F : kMax / static_cast<float>(pFrom[3]);
        const float l = static_cast<float>(pFrom[0]) * 100.0F / kMax * factor;
        const float a = static_cast<float>(static_cast<Signed>(pFrom[1])) / kUnit * factor;
        const float b = static_cast<float>(static_cast<Signed>(pFrom[2])) / kUnit * factor;
        converter.Convert(std::min(l, 100.0F), a, b, pTo);
        if (eAlpha != ETiffAlpha::None)
            pTo[3] = To8(pFrom[3]);
    });
}

template <class T> bool Expand(TIFF* pTiff, const STiffColors& colors, const CImage& samples, CImage& image)
{
    if (colors.eKind == ETiffColors::Palette) {
        Palette palette;
        if (!ReadPalette(pTiff, colors.nBits, palette))
            return false;
        ExpandPalette<T>(samples, colors, palette, image);
    } else if (colors.eKind == ETiffColors::Lab) {
        CLabToRgb converter;
        if (!converter.Init(pTiff))
            return false;
        ExpandLab<T>(samples, colors, converter, image);
    } else if (colors.eKind == ETiffColors::Cmyk) {
        ExpandCmyk<T>(samples, colors, image);
    } else if (colors.eKind == ETiffColors::Rgb) {
        ExpandRgbAlpha<T>(samples, colors, image);
    } else {
        ExpandGreyAlpha<T>(samples, colors, image);
    }
    return true;
}
} // namespace

int StoredChannels(const STiffColors& colors)
{
    const int nAlpha = colors.eAlpha == ETiffAlpha::None ? 0 : 1;
    switch (colors.eKind) {
    case ETiffColors::Rgb:
    case ETiffColors::Lab:
        return 3 + nAlpha;
    case ETiffColors::Cmyk:
        return 4 + nAlpha;
    default:
        return 1 + nAlpha;
    }
}

int ResultChannels(const STiffColors& colors)
{
    if (colors.eAlpha != ETiffAlpha::None)
        return 4;
    return colors.eKind == ETiffColors::Grey || colors.eKind == ETiffColors::WhiteIsZero ? 1 : 3;
}

bool AreRaw(const STiffColors& colors)
{
    return colors.eKind == ETiffColors::Palette || colors.eKind == ETiffColors::Lab;
}

bool AreWide(const STiffColors& colors)
{
    return colors.nBits > 8 && (AreRaw(colors) || colors.eAlpha == ETiffAlpha::Premultiplied);
}

bool IsInPlace(const STiffColors& colors)
{
    return !AreRaw(colors) && !AreWide(colors) && StoredChannels(colors) == ResultChannels(colors);
}

void AdjustInPlace(const STiffColors& colors, CImage& image)
{
    if (colors.eKind == ETiffColors::WhiteIsZero)
        ForPixels<unsigned char>(image, colors, image, [](const unsigned char* pFrom, unsigned char* pTo) {
            *pTo = static_cast<unsigned char>(255 - *pFrom);
        });
    else if (colors.eAlpha == ETiffAlpha::Premultiplied)
        ExpandRgbAlpha<unsigned char>(image, colors, image);
}

bool ExpandColors(TIFF* pTiff, const STiffColors& colors, const CImage& samples, CImage& image)
{
    if (image.Create(samples.GetWidth() / StoredChannels(colors), samples.GetHeight(), ResultChannels(colors),
                     8, EImageType::Interleaved, kRowAlignment) != 0)
        return false;
    return (AreWide(colors) ? Expand<std::uint16_t> : Expand<unsigned char>)(pTiff, colors, samples, image);
}

} // namespace Vantor::Algorithms
