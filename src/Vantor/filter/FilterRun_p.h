// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/FailureReason_p.h>
#include <Vantor/filter/Bands_p.h>

#include <new>
#include <utility>

namespace Vantor::Algorithms
{

inline constexpr const char* kNoFilterMemory = "There is not enough memory for the filter.";

/// The pixels that a filter is asked to write.
struct SFilterRegion {
    const Geometry::CGeometry* pGeometry;
    ERegionMode eMode;
    double dblTolerance;
};

/// Runs a filter on the region of an 8-bit image. What is cancelled leaves it half done.
/// @param filter  takes the job and returns a result
template <class Filter> CResult RunFilter(CImage& image, const SFilterRegion& region, const Filter& filter)
{
    if (!image.GetData())
        return CResult::Failure("The image is empty.");
    if (image.GetBitDepth() != 8)
        return CResult::Failure("Only images of 8 bits per channel can be filtered.");
    PixelRuns runs;
    CResult found = FindRegion(image.GetWidth(), image.GetHeight(), region.pGeometry, region.eMode,
                               region.dblTolerance, runs);
    if (!found.IsSuccess())
        return found;
    const SFilterJob job{image.GetRows(), image.GetWidth(), image.GetHeight(), image.GetChannel(), runs};
    CResult result = filter(job);
    return CProgress::IsThreadCancelled() ? CResult::Failure(kCancelled) : std::move(result);
}

/// Records how a filter ended, even when memory ran out: storing a reason may need some, too.
template <class Run> int NoteRun(CFailureReason& failure, const Run& run)
{
    try {
        return failure.Note(run());
    } catch (const std::bad_alloc&) {
        return failure.Fail(kNoFilterMemory);
    }
}

} // namespace Vantor::Algorithms
