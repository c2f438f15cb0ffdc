// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/CImage.h>

#include <Vantor/EngineModule_p.h>
#include <Vantor/filter/FilterRun_p.h>
#include <Vantor/filter/NeighbourFilter_p.h>
#include <Vantor/filter/WindowMedian_p.h>

#include <string>

namespace Vantor::Algorithms
{

namespace
{
const SEngineModule<const SRowKernels>& FilterModule()
{
    static const auto module = LoadEngineModule<const SRowKernels>(kFilterModule, kFilterFunction);
    return module;
}

CResult RunKernel(CImage& image, const SFilterRegion& region, SRowKernel SRowKernels::*kernel)
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
    const SFilterRegion where{region, mode, tolerance};
    if (radiusX < 0 || radiusY < 0)
        return m_pFailure->Fail("A radius of the median is negative.");
    return NoteRun(*m_pFailure, [&] {
        if (radiusX == radiusY && (radiusX == 1 || radiusX == 2))
            return RunKernel(*this, where, radiusX == 1 ? &SRowKernels::median3x3 : &SRowKernels::median5x5);
        return RunFilter(*this, where, [radiusX, radiusY](const SFilterJob& job) {
            if (radiusX == 0 && radiusY == 0)
                return CResult::Success();
            return WindowMedian(job, radiusX, radiusY) ? CResult::Success()
                                                       : CResult::Failure(kNoFilterMemory);
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
