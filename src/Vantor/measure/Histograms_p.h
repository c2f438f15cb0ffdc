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
    /// @param bits  8 or 16: there is a bin for each value. Throws std::bad_alloc.
    CHistograms(int channels, int bits);

    void Add(const SPixelSource& source, const Geometry::SPixelRun* begin, const Geometry::SPixelRun* end);
    /// Fills in median, mode and histogram of a plane and empties it.
    /// @param low, high  the plane's extreme values
    /// @param count      the number of pixels, at least 1
    void Take(int plane, std::uint32_t low, std::uint32_t high, std::uint64_t count,
              SChannelStatistics& statistics);

private:
    std::uint32_t* Table(int plane, std::size_t copy);
    template <class T> void AddRun(const T* samples, int count);
    template <class T> void AddChannel(const T* samples, int count, int channel);
    template <class T> void AddColors(const T* samples, int count);

    int m_nChannels;
    std::size_t m_nBins;
    std::size_t m_nCopies;
    std::vector<std::uint16_t> m_vctGreys;  ///< of some pixels, before they are counted
    std::vector<std::uint32_t> m_vctCounts; ///< m_nCopies tables for each plane
};

} // namespace Vantor::Algorithms
