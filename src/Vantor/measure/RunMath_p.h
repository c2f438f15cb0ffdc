// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/filter/Region_p.h>
#include <Vantor/measure/Components.h>

#include <cstdint>
#include <vector>

namespace Vantor::Algorithms
{

/// The pixels of some runs.
std::uint64_t CountOf(const PixelRuns& runs);

/// The mean place of the centres of the pixels of some runs.
/// @param count  of the pixels, not 0
Geometry::SPlace CentroidOf(const PixelRuns& runs, std::uint64_t count);

/// Makes one run of runs that touch each other within a row.
/// @param runs  by row and column, never overlapping
void JoinTouching(PixelRuns& runs);

/// Which runs belong together.
struct SRunLabels {
    std::vector<std::uint32_t> labels; ///< of each run, 0 to nCount - 1, by the first run of each label
    std::uint32_t nCount = 0;
};

/// Gives runs that hold neighbours the same label.
/// @param runs  by row and column; within a row they do not touch
SRunLabels LabelRuns(const PixelRuns& runs, ENeighbours neighbours);

/// Adds to the foreground what it encloses of a region.
/// @param foreground  runs within the region, as LabelRuns takes them
/// @param region      by row and column; within a row they do not touch
/// @param neighbours  of the foreground; for what is enclosed the others count
void FillHoles(PixelRuns& foreground, const PixelRuns& region, ENeighbours neighbours);

/// The outline of one component, see SComponent.
/// @param runs  one component's with these neighbours, at least one run, as LabelRuns takes them
std::shared_ptr<Geometry::CPolygon> OutlineOf(const PixelRuns& runs, ENeighbours neighbours);

} // namespace Vantor::Algorithms
