// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/CImage.h>

#include <Vantor/EngineModule_p.h>
#include <Vantor/FailureReason_p.h>
#include <Vantor/filter/NeighbourFilter_p.h>
#include <Vantor/filter/WindowMedian_p.h>

#include <new>
#include <string>

namespace Vantor::Algorithms
{

namespace
{
constexpr const char* kNoMemory = "There is not enough memory for the filter.";

struct SRegion {
    const Geometry::CGeometry* pGeometry;
    ERegionMode eMode;
    double dblTolerance;
};

/// Runs a filter on the region of an 8-bit image.
/// @param filter  takes the job and returns a result
template <class Filter> CResult RunFilter(CImage& image, const SRegion& region, const Filter& filter)
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
    return filter(job);
}

/// Notes how a filter ended, also when memory ran out: even a reason may need some.
template <class Run> int NoteRun(CFailureReason& failure, const Run& run)
{
    try {
        return failure.Note(run());
    } catch (const std::bad_alloc&) {
        return failure.Fail(kNoMemory);
    }
}

const SEngineModule<const SRowKernels>& FilterModule()
{
    static const auto module = LoadEngineModule<const SRowKernels>(kFilterModule, kFilterFunction);
    return module;
}

CResult RunKernel(CImage& image, const SRegion& region, SRowKernel SRowKernels::*kernel)
{
    return RunFilter(image, region, [kernel](const SFilterJob& job) {
        if (!FilterModule().result.IsSuccess())
            return CResult::Failure("The filter cannot be loaded: " + FilterModule().result.GetReason() +
                                    '.');
        FilterNeighbours(job, FilterModule().pFunction()->*kernel);
        return CResult::Success();
    });
}
} // namespace

int CImage::MedianFilter(int radiusX, int radiusY, const Geometry::CGeometry* region, ERegionMode mode,
                         double tolerance)
{
    const SRegion where{region, mode, tolerance};
    if (radiusX < 0 || radiusY < 0)
        return m_pFailure->Fail("A radius of the median is negative.");
    return NoteRun(*m_pFailure, [&] {
        if (radiusX == radiusY && (radiusX == 1 || radiusX == 2))
            return RunKernel(*this, where, radiusX == 1 ? &SRowKernels::median3x3 : &SRowKernels::median5x5);
        return RunFilter(*this, where, [radiusX, radiusY](const SFilterJob& job) {
            if (radiusX == 0 && radiusY == 0)
                return CResult::Success();
            return WindowMedian(job, radiusX, radiusY) ? CResult::Success() : CResult::Failure(kNoMemory);
        });
    });
}

int CImage::SobelX(const Geometry::CGeometry* region, ERegionMode mode, double tolerance)
{
    return NoteRun(*m_pFailure, [&] {
        return RunKernel(*this, {region, mode, tolerance}, &SRowKernels::sobelX);
    });
}

int CImage::SobelY(const Geometry::CGeometry* region, ERegionMode mode, double tolerance)
{
    return NoteRun(*m_pFailure, [&] {
        return RunKernel(*this, {region, mode, tolerance}, &SRowKernels::sobelY);
    });
}

int CImage::SobelXY(const Geometry::CGeometry* region, ERegionMode mode, double tolerance)
{
    return NoteRun(*m_pFailure, [&] {
        return RunKernel(*this, {region, mode, tolerance}, &SRowKernels::sobelXY);
    });
}

} // namespace Vantor::Algorithms
