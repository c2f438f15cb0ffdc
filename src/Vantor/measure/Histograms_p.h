// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/measure/PixelSums_p.h>
#include <Vantor/measure/RegionStatistics.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Vantor::Algorithms
{

/// Counts how often each value occurs: of each channel and, for colours, of the two greys, rounded. Planes 0
/// to channels - 1 are the channels, then follow the greys.
class CHistograms
{
public:
    /// @param kernels  outlives the object
    /// @param bits     8 or 16: there is a bin for each value. Throws std::bad_alloc.
    CHistograms(const SPixelKernels& kernels, int channels, int bits);

    void Add(const SPixelSource& source, const Geometry::SPixelRun* begin, const Geometry::SPixelRun* end);
    /// Fills in median, mode and histogram of a plane and empties it.
    /// @param low, high  the plane's extreme values
    /// @param count      the number of pixels of the region, at least 1
    void Take(int plane, std::uint32_t low, std::uint32_t high, std::uint64_t count,
              SChannelStatistics& statistics);

private:
    std::uint32_t* Table(int plane, std::size_t copy);
    void CountSamples();
    template <class T> void CountPlane(const T* values, int plane);

    const SPixelKernels& m_kernels;
    int m_nChannels;
    int m_nBits;
    std::size_t m_nBins;
    std::size_t m_nCopies;
    std::vector<std::uint32_t> m_vctCounts; ///< m_nCopies tables for each plane
    std::vector<unsigned char> m_vctSamples;
    std::vector<unsigned char> m_vctPlanes;
    std::size_t m_nPixels = 0; ///< in m_vctSamples, not counted yet
};

} // namespace Vantor::Algorithms
