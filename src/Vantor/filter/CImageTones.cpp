// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// CImage's filters that look at single pixels, and those that smooth.
#include <Vantor/image/CImage.h>

#include <Vantor/EngineModule_p.h>
#include <Vantor/filter/FilterRun_p.h>
#include <Vantor/filter/Smooth_p.h>
#include <Vantor/filter/Threshold_p.h>
#include <Vantor/filter/Tones_p.h>

namespace Vantor::Algorithms
{

namespace
{
constexpr double kLeastSigma = 0.1;
constexpr double kMaxSigma = 100.0;
constexpr double kMaxAmount = 10.0;
constexpr double kMaxContrast = 10.0;
constexpr double kLeastGamma = 0.1;
constexpr double kMaxGamma = 10.0;
constexpr int kMaxValue = 255;
constexpr int kMaxRadius = 1000;

/// False for NaN too.
bool IsWithin(double value, double least, double most)
{
    return value >= least && value <= most;
}

const SEngineModule<const SSmoothKernels>& SmoothModule()
{
    static const auto module = LoadEngineModule<const SSmoothKernels>(kSmoothModule, kSmoothFunction);
    return module;
}

/// Runs smooth(job, kernels), which returns false when memory runs out.
template <class Smooth> CResult RunSmooth(CImage& image, const SFilterRegion& region, const Smooth& smooth)
{
    return RunFilter(image, region, [&smooth](const SFilterJob& job) {
        if (!SmoothModule().result.IsSuccess())
            return CResult::Failure("The filter cannot be loaded: " + SmoothModule().result.GetReason() +
                                    '.');
        return smooth(job, *SmoothModule().pFunction()) ? CResult::Success()
                                                        : CResult::Failure(kNoFilterMemory);
    });
}
} // namespace

int CImage::Invert(const Geometry::CGeometry* region, ERegionMode mode, double tolerance)
{
    return NoteRun(*m_pFailure, [&] {
        return RunFilter(*this, {region, mode, tolerance}, [](const SFilterJob& job) {
            MapTones(job, InvertedTones());
            return CResult::Success();
        });
    });
}

int CImage::AdjustTones(double brightness, double contrast, double gamma, const Geometry::CGeometry* region,
                        ERegionMode mode, double tolerance)
{
    if (!IsWithin(brightness, -1.0, 1.0) || !IsWithin(contrast, 0.0, kMaxContrast) ||
        !IsWithin(gamma, kLeastGamma, kMaxGamma))
        return m_pFailure->Fail("Brightness, contrast or gamma is out of range.");
    return NoteRun(*m_pFailure, [&] {
        return RunFilter(*this, {region, mode, tolerance}, [&](const SFilterJob& job) {
            MapTones(job, AdjustedTones(brightness, contrast, gamma));
            return CResult::Success();
        });
    });
}

int CImage::Threshold(int value, const Geometry::CGeometry* region, ERegionMode mode, double tolerance)
{
    if (value < 0 || value > kMaxValue)
        return m_pFailure->Fail("The threshold is out of range.");
    return NoteRun(*m_pFailure, [&] {
        return RunFilter(*this, {region, mode, tolerance}, [value](const SFilterJob& job) {
            ThresholdRuns(job, value);
            return CResult::Success();
        });
    });
}

int CImage::ThresholdByOtsu(const Geometry::CGeometry* region, ERegionMode mode, double tolerance)
{
    return NoteRun(*m_pFailure, [&] {
        return RunFilter(*this, {region, mode, tolerance}, [](const SFilterJob& job) {
            ThresholdRuns(job, OtsuValue(job));
            return CResult::Success();
        });
    });
}

int CImage::ThresholdByMean(int radius, double offset, const Geometry::CGeometry* region, ERegionMode mode,
                            double tolerance)
{
    if (radius < 0 || radius > kMaxRadius || !IsWithin(offset, -kMaxValue, kMaxValue))
        return m_pFailure->Fail("The radius or the offset of the threshold is out of range.");
    return NoteRun(*m_pFailure, [&] {
        return RunSmooth(*this, {region, mode, tolerance},
                         [&](const SFilterJob& job, const SSmoothKernels& kernels) {
                             return ThresholdRunsByMean(job, kernels, radius, offset);
                         });
    });
}

int CImage::GaussianBlur(double sigma, const Geometry::CGeometry* region, ERegionMode mode, double tolerance)
{
    constexpr double kSmoothed = -1.0;
    if (!IsWithin(sigma, kLeastSigma, kMaxSigma))
        return m_pFailure->Fail("The sigma of the Gaussian is out of range.");
    return NoteRun(*m_pFailure, [&] {
        return RunSmooth(*this, {region, mode, tolerance},
                         [&](const SFilterJob& job, const SSmoothKernels& kernels) {
                             return SharpenRuns(job, kernels, sigma, kSmoothed);
                         });
    });
}

int CImage::UnsharpMask(double sigma, double amount, const Geometry::CGeometry* region, ERegionMode mode,
                        double tolerance)
{
    if (!IsWithin(sigma, kLeastSigma, kMaxSigma) || !IsWithin(amount, 0.0, kMaxAmount))
        return m_pFailure->Fail("The sigma or the amount of the unsharp mask is out of range.");
    return NoteRun(*m_pFailure, [&] {
        return RunSmooth(*this, {region, mode, tolerance},
                         [&](const SFilterJob& job, const SSmoothKernels& kernels) {
                             return SharpenRuns(job, kernels, sigma, amount);
                         });
    });
}

} // namespace Vantor::Algorithms
