// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/Export.h>
#include <Vantor/geometry/CGeometry.h>

#include <array>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace Vantor::Algorithms
{

class CImage;

/// What stands for a number that does not exist, such as the mean of no pixel.
constexpr double kUndefined = std::numeric_limits<double>::quiet_NaN();

/// How much there is to be known about a region.
enum class EStatistics : int {
    Moments = 0, ///< all but histogram, median and mode
    Full = 1     ///< everything
};

/// The statistics of one channel, or of a grey, in sample values: 0 to 255, or to 65535. All of it is
/// computed from exact whole numbers and rounded once, at the end.
struct SChannelStatistics {
    static constexpr int kBins = 256; ///< of the histogram

    double min = kUndefined;       ///< the smallest value
    double max = kUndefined;       ///< the largest value
    double mean = kUndefined;      ///< sum by count
    double deviation = kUndefined; ///< sqrt(sum of (v - mean)^2 / (count - 1)); 0 for one pixel
    double sum = 0.0;              ///< of all values: the raw integrated density
    /// The mean place of the pixels' centres, weighted by their values; undefined when all values are 0.
    Geometry::SPlace centreOfMass{kUndefined, kUndefined};
    /// The first value of which the pixels up to it are more than half of all.
    double median = kUndefined;
    double mode = kUndefined; ///< the most frequent value, the lowest of several
    /// The pixels in each of kBins bins of one value, or of 256 values of 16 bits; empty without
    /// EStatistics::Full.
    std::vector<std::uint32_t> histogram;
};

/// The statistics of the pixels of a region that lie in the image. A region without any has a count of 0 and
/// no defined values.
struct SRegionStatistics {
    std::string failure;     ///< a sentence in English, without defined values; empty for a success
    std::uint64_t count = 0; ///< pixels: the pixel area
    Geometry::SPlace centroid{kUndefined, kUndefined}; ///< the mean place of the pixels' centres
    std::vector<SChannelStatistics> channels;          ///< of each channel of the image, alpha too
    /// @{
    /// Of images of 3 and 4 channels: (R + G + B) / 3, and 0.299 R + 0.587 G + 0.114 B. Median, mode and
    /// histogram are those of the grey rounded to the nearest whole number, everything else of the exact one.
    std::optional<SChannelStatistics> grey;
    std::optional<SChannelStatistics> weightedGrey;
    /// @}
};

/// The statistics of regions of an image of 8 or 16 bits, which nobody changes meanwhile. The pixels of a
/// region are those of CGeometry::GetPixelRuns. Loads the module vantor-measure.so at its first use, asks the
/// progress of its thread whether to go on, never throws.
/// @param image    fewer than 2^32 pixels: sums are exact up to there
/// @param regions  not owned; null stands for the whole image
/// @param what     median, mode and histogram take most of the time
/// @return one for each region, in their order, with a failure of its own each; none when memory runs out
VANTOR_EXPORT std::vector<SRegionStatistics>
MeasureRegions(const CImage& image, const std::vector<const Geometry::CGeometry*>& regions, EStatistics what);

/// MeasureRegions for one region.
VANTOR_EXPORT SRegionStatistics MeasureRegion(const CImage& image, const Geometry::CGeometry* region,
                                              EStatistics what);

} // namespace Vantor::Algorithms
