// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/CImage.h>

#include <Vantor/FailureReason_p.h>
#include <Vantor/filter/NeighbourFilter_p.h>
#include <Vantor/filter/WindowMedian_p.h>

#include <new>

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
/// @param filter  takes the job and returns whether there was memory for it
/// @return null or the reason of the failure
template <class Filter> const char* RunFilter(CImage& image, const SRegion& region, const Filter& filter)
{
    if (!image.GetData())
        return "The image is empty.";
    if (image.GetBitDepth() != 8)
        return "Only images of 8 bits per channel can be filtered.";
    try {
        PixelRuns runs;
        const char* pReason = FindRegion(image.GetWidth(), image.GetHeight(), region.pGeometry, region.eMode,
                                         region.dblTolerance, runs);
        if (pReason)
            return pReason;
        const SFilterJob job{image.GetRows(), image.GetWidth(), image.GetHeight(), image.GetChannel(), runs};
        return filter(job) ? nullptr : kNoMemory;
    } catch (const std::bad_alloc&) {
        return kNoMemory;
    }
}

const char* RunKernel(CImage& image, const SRegion& region, const SRowKernel& kernel)
{
    return RunFilter(image, region, [&kernel](const SFilterJob& job) {
        FilterNeighbours(job, kernel);
        return true;
    });
}
} // namespace

int CImage::MedianFilter(int radiusX, int radiusY, const Geometry::CGeometry* region, ERegionMode mode,
                         double tolerance)
{
    const SRegion where{region, mode, tolerance};
    if (radiusX < 0 || radiusY < 0)
        return m_pFailure->Note("A radius of the median is negative.");
    if (radiusX == radiusY && (radiusX == 1 || radiusX == 2))
        return m_pFailure->Note(RunKernel(*this, where, radiusX == 1 ? kMedian3x3 : kMedian5x5));
    return m_pFailure->Note(RunFilter(*this, where, [radiusX, radiusY](const SFilterJob& job) {
        return (radiusX == 0 && radiusY == 0) || WindowMedian(job, radiusX, radiusY);
    }));
}

int CImage::SobelX(const Geometry::CGeometry* region, ERegionMode mode, double tolerance)
{
    return m_pFailure->Note(RunKernel(*this, {region, mode, tolerance}, kSobelX));
}

int CImage::SobelY(const Geometry::CGeometry* region, ERegionMode mode, double tolerance)
{
    return m_pFailure->Note(RunKernel(*this, {region, mode, tolerance}, kSobelY));
}

int CImage::SobelXY(const Geometry::CGeometry* region, ERegionMode mode, double tolerance)
{
    return m_pFailure->Note(RunKernel(*this, {region, mode, tolerance}, kSobelXY));
}

} // namespace Vantor::Algorithms
