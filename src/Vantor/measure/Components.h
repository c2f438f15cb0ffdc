// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/Export.h>
#include <Vantor/geometry/CGeometry.h>

#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace Vantor::Geometry
{
class CPolygon;
}

namespace Vantor::Algorithms
{

class CImage;

/// Which pixels are neighbours.
enum class ENeighbours : int {
    Four = 4, ///< those that share a side
    Eight = 8 ///< those that share a side or a corner
};

/// What FindComponents looks for.
struct SComponentOptions {
    /// As a channel: 0.299 R + 0.587 G + 0.114 B, rounded; of images of 1 or 2 channels the first one.
    static constexpr int kGrey = -1;

    int channel = kGrey; ///< kGrey, or an index from 0 on
    /// @{
    /// The values of the pixels that are looked for, both inclusive.
    std::uint32_t low = 128;
    std::uint32_t high = 65535;
    /// @}
    ENeighbours neighbours = ENeighbours::Eight; ///< pixels that are neighbours belong together
    /// @{
    /// The pixels that a component has, both inclusive; of one whose holes are filled with them.
    std::uint64_t minArea = 1;
    std::uint64_t maxArea = std::numeric_limits<std::uint64_t>::max();
    /// @}
    /// Pixels of the region of other values that a component encloses belong to it too, and so does what lies
    /// within them. They are no hole if the region has an edge there.
    bool fillHoles = false;
    int most = 100000; ///< 1 or more; if there are more of those areas, FindComponents fails
};

/// Pixels that belong together.
struct SComponent {
    /// Covers exactly the component's pixels. Its corners are whole numbers, its sides upright or level. One
    /// line leads to each hole and back, along which it meets itself.
    std::shared_ptr<Geometry::CPolygon> polygon;
    std::uint64_t count;       ///< pixels
    Geometry::SPlace centroid; ///< the mean place of the pixels' centres
};

/// What FindComponents has found.
struct SComponents {
    std::string failure;           ///< a sentence in English, without components; empty for a success
    std::vector<SComponent> found; ///< by their topmost pixels, of these by the leftmost
};

/// Finds the connected components of the pixels of some values in a region. MeasureRegions tells more of
/// their polygons. Takes time by the pixels and at most 20 bytes for each; asks the progress of its thread
/// whether to go on, never throws.
/// @param image   8 or 16 bits, fewer than 2^32 pixels; nobody changes it meanwhile
/// @param region  not owned; null stands for the whole image. Nothing beyond it belongs to a component.
/// @param options see there
VANTOR_EXPORT SComponents FindComponents(const CImage& image, const Geometry::CGeometry* region,
                                         const SComponentOptions& options = SComponentOptions());

} // namespace Vantor::Algorithms
