// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/geometry/CGeometry.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace Vantor::Algorithms
{

/// Whole numbers of 128 bits: for sums of products, so that no image overflows one.
__extension__ typedef unsigned __int128 Wide;

using Real = long double;

/// Nearly all numbers have 64 bits; converting the others calls a function.
inline Real RealOf(Wide number)
{
    return number <= UINT64_MAX ? static_cast<Real>(static_cast<std::uint64_t>(number))
                                : static_cast<Real>(number);
}

constexpr int kMostChannels = 4;

/// The two greys of a colour as whole numbers, in the order of arrGreyMin.
struct SGreyWeights {
    std::uint32_t nRed;
    std::uint32_t nGreen;
    std::uint32_t nBlue;

    constexpr std::uint32_t Sum() const { return nRed + nGreen + nBlue; }
};
constexpr SGreyWeights kGreys[2] = {{1, 1, 1}, {299, 587, 114}};

/// What the statistics of a region are made of. All of it is exact: a sample has 16 bits at most and a region
/// less than 2^32 pixels, so a sum has 48 bits and a sum of squares 64.
struct SPixelSums {
    std::uint32_t arrMin[kMostChannels];
    std::uint32_t arrMax[kMostChannels] = {};
    std::uint64_t arrSum[kMostChannels] = {};
    Wide arrSumX[kMostChannels] = {}; ///< of value times column
    Wide arrSumY[kMostChannels] = {}; ///< of value times row
    std::uint64_t arrSquares[kMostChannels] = {};
    std::uint64_t arrMixed[3] = {}; ///< of R G, R B and G B, of images of 3 or 4 channels
    std::uint32_t arrGreyMin[2];    ///< of colours, weighted by kGreys and not divided
    std::uint32_t arrGreyMax[2] = {};

    SPixelSums()
    {
        std::fill(std::begin(arrMin), std::end(arrMin), UINT32_MAX);
        std::fill(std::begin(arrGreyMin), std::end(arrGreyMin), UINT32_MAX);
    }
};

/// Interleaved samples.
struct SPixelSource {
    const unsigned char* const* pRows;
    int nWidth;    ///< pixels of a row that may be read
    int nChannels; ///< 1 to 4
    int nBits;     ///< 8 or 16
};

/// The channels of an image and, for colours, the two greys.
constexpr int PlanesOf(int channels)
{
    return channels >= 3 ? channels + 2 : channels;
}

/// As many pixels are split at once at most: all that is read and written fits the nearest cache.
constexpr std::size_t kSplitPixels = 2048;

/// What the module returns: functions that use the widest instructions of the machine.
struct SPixelKernels {
    /// Adds up the pixels of some runs.
    void (*add)(const SPixelSource& source, const Geometry::SPixelRun* begin, const Geometry::SPixelRun* end,
                SPixelSums& sums);
    /// Splits interleaved samples into planes of kSplitPixels each; behind the channels, for colours, the two
    /// greys, rounded.
    /// @param samples  of 8 or 16 bits, aligned as such
    /// @param count    pixels, kSplitPixels at most
    /// @param planes   for PlanesOf(channels) kSplitPixels samples
    void (*split)(const void* samples, std::size_t count, int channels, int bits, void* planes);
};

/// The module and its function that returns the kernels, which live until the process ends.
constexpr const char* kMeasureModule = "vantor-measure.so";
constexpr const char* kMeasureFunction = "VantorGetPixelKernels";

} // namespace Vantor::Algorithms
