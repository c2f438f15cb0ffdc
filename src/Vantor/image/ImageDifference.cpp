// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/ImageDifference.h>

#include <Vantor/image/CImage.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <new>

namespace Vantor::Algorithms
{

namespace
{
std::string SizeText(const CImage& image)
{
    return std::to_string(image.GetWidth()) + " x " + std::to_string(image.GetHeight());
}

std::string PairText(int nA, int nB)
{
    return std::to_string(nA) + " and " + std::to_string(nB) + ".";
}

std::string FindFault(const CImage& a, const CImage& b)
{
    if (!a.GetData() || !b.GetData())
        return "There are not two images to compare.";
    if (a.GetWidth() != b.GetWidth() || a.GetHeight() != b.GetHeight())
        return "The images differ in size: " + SizeText(a) + " and " + SizeText(b) + " pixels.";
    if (a.GetChannel() != b.GetChannel())
        return "The images differ in the number of channels: " + PairText(a.GetChannel(), b.GetChannel());
    if (a.GetBitDepth() != b.GetBitDepth())
        return "The images differ in the bits per channel: " + PairText(a.GetBitDepth(), b.GetBitDepth());
    return {};
}

template <class Sample> Sample DistanceOf(const unsigned char* pA, const unsigned char* pB)
{
    Sample a;
    Sample b;
    std::memcpy(&a, pA, sizeof a);
    std::memcpy(&b, pB, sizeof b);
    return static_cast<Sample>(a > b ? a - b : b - a);
}

template <class Sample> void Put(unsigned char* pTo, Sample value)
{
    std::memcpy(pTo, &value, sizeof value);
}

/// One row of samples without alpha.
template <class Sample>
void PlainRow(const unsigned char* pA, const unsigned char* pB, unsigned char* pTo, std::size_t nSamples)
{
    for (std::size_t i = 0; i < nSamples * sizeof(Sample); i += sizeof(Sample))
        Put(pTo + i, DistanceOf<Sample>(pA + i, pB + i));
}

/// One row of pixels whose last sample is alpha.
template <class Sample>
void AlphaRow(const unsigned char* pA, const unsigned char* pB, unsigned char* pTo, std::size_t nPixels,
              std::size_t nChannels)
{
    const std::size_t nAlpha = (nChannels - 1) * sizeof(Sample);
    for (std::size_t nPixel = 0; nPixel < nPixels; ++nPixel) {
        const std::size_t nBegin = nPixel * nChannels * sizeof(Sample);
        const Sample least = DistanceOf<Sample>(pA + nBegin + nAlpha, pB + nBegin + nAlpha);
        for (std::size_t i = nBegin; i < nBegin + nAlpha; i += sizeof(Sample))
            Put(pTo + i, std::max(least, DistanceOf<Sample>(pA + i, pB + i)));
        Put(pTo + nBegin + nAlpha, std::numeric_limits<Sample>::max());
    }
}

template <class Sample> void Fill(const CImage& a, const CImage& b, CImage& result)
{
    const auto nWidth = static_cast<std::size_t>(a.GetWidth());
    const auto nChannels = static_cast<std::size_t>(a.GetChannel());
    unsigned char* const* pTo = result.GetRows();
    for (int y = 0; y < a.GetHeight(); ++y)
        if (nChannels % 2 == 0)
            AlphaRow<Sample>(a.GetRows()[y], b.GetRows()[y], pTo[y], nWidth, nChannels);
        else
            PlainRow<Sample>(a.GetRows()[y], b.GetRows()[y], pTo[y], nWidth * nChannels);
}
} // namespace

std::string MakeDifference(const CImage& a, const CImage& b, CImage& result)
try {
    constexpr int kAlignment = 4;
    std::string strFault = FindFault(a, b);
    if (!strFault.empty())
        return strFault;
    if (&result == &a || &result == &b)
        return "The difference needs an image of its own.";
    if (result.Create(a.GetWidth(), a.GetHeight(), a.GetChannel(), a.GetBitDepth(), a.GetImageType(),
                      kAlignment) != 0)
        return result.GetFailureReason();
    a.GetBitDepth() == 16 ? Fill<std::uint16_t>(a, b, result) : Fill<std::uint8_t>(a, b, result);
    return {};
} catch (const std::bad_alloc&) {
    return "Out of memory.";
}

} // namespace Vantor::Algorithms
