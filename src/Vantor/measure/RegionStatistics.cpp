// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/measure/RegionStatistics.h>

#include <Vantor/CProgress.h>
#include <Vantor/EngineModule_p.h>
#include <Vantor/filter/Region_p.h>
#include <Vantor/measure/Histograms_p.h>
#include <Vantor/measure/PixelSums_p.h>
#include <Vantor/measure/RunMath_p.h>

#include <cmath>
#include <new>
#include <optional>

namespace Vantor::Algorithms
{

using Geometry::CGeometry;
using Geometry::SPixelRun;

namespace
{
/// Pixels that go through both passes before the next ones, so that they are still in the cache.
constexpr std::int64_t kBatch = 32768;
constexpr double kHalfPixel = 0.5;

/// Short enough to be stored without an allocation.
constexpr const char* kNoMemory = "Out of memory.";

const SEngineModule<const SPixelKernels>& MeasureModule()
{
    static const auto module = LoadEngineModule<const SPixelKernels>(kMeasureModule, kMeasureFunction);
    return module;
}

CResult Check(const CImage& image)
{
    if (!image.GetRows())
        return CResult::Failure("The image is empty.");
    const std::uint64_t nPixels =
        static_cast<std::uint64_t>(image.GetWidth()) * static_cast<std::uint64_t>(image.GetHeight());
    if (nPixels > UINT32_MAX)
        return CResult::Failure("An image of 2^32 pixels or more cannot be measured.");
    if (!MeasureModule().result.IsSuccess())
        return CResult::Failure("What measures cannot be loaded: " + MeasureModule().result.GetReason() +
                                '.');
    return CResult::Success();
}

/// The statistics of whole numbers that are the values times a scale.
struct SExact {
    std::uint64_t nCount;
    std::uint32_t nMin;
    std::uint32_t nMax;
    Wide nSum;
    Wide nSquares;
    Wide nSumX;
    Wide nSumY;
    std::uint32_t nScale;
};

SChannelStatistics StatisticsOf(const SExact& exact)
{
    SChannelStatistics statistics;
    if (exact.nCount == 0)
        return statistics;
    const Real count = static_cast<Real>(exact.nCount);
    const Real scale = exact.nScale;
    const Real sum = RealOf(exact.nSum);
    statistics.min = static_cast<double>(exact.nMin / scale);
    statistics.max = static_cast<double>(exact.nMax / scale);
    statistics.mean = static_cast<double>(sum / (count * scale));
    statistics.sum = static_cast<double>(sum / scale);
    statistics.deviation = 0.0;
    if (exact.nCount > 1) {
        const Wide nSpread = exact.nCount * exact.nSquares - exact.nSum * exact.nSum;
        statistics.deviation =
            static_cast<double>(std::sqrt(RealOf(nSpread) / (count * (count - 1.0L))) / scale);
    }
    if (exact.nSum > 0)
        statistics.centreOfMass = {static_cast<double>(RealOf(exact.nSumX) / sum + kHalfPixel),
                                   static_cast<double>(RealOf(exact.nSumY) / sum + kHalfPixel)};
    return statistics;
}

SExact ExactOfChannel(const SPixelSums& sums, std::uint64_t count, int channel)
{
    return {count,
            sums.arrMin[channel],
            sums.arrMax[channel],
            sums.arrSum[channel],
            sums.arrSquares[channel],
            sums.arrSumX[channel],
            sums.arrSumY[channel],
            1};
}

/// The squares of a weighted sum follow from the squares and products of the channels.
SExact ExactOfGrey(const SPixelSums& sums, std::uint64_t count, int grey)
{
    const Wide r = kGreys[grey].nRed;
    const Wide g = kGreys[grey].nGreen;
    const Wide b = kGreys[grey].nBlue;
    const auto weighted = [&](const auto& parts) { return r * parts[0] + g * parts[1] + b * parts[2]; };
    const Wide nSquares =
        r * r * sums.arrSquares[0] + g * g * sums.arrSquares[1] + b * b * sums.arrSquares[2] +
        2 * (r * g * sums.arrMixed[0] + r * b * sums.arrMixed[1] + g * b * sums.arrMixed[2]);
    return {count,    sums.arrGreyMin[grey],  sums.arrGreyMax[grey],  weighted(sums.arrSum),
            nSquares, weighted(sums.arrSumX), weighted(sums.arrSumY), kGreys[grey].Sum()};
}

class CMeasurer
{
public:
    CMeasurer(const CImage& image, EStatistics what)
        : m_image(image), m_source{image.GetRows(), image.GetWidth(), image.GetChannel(), image.GetBitDepth()}
    {
        if (what == EStatistics::Full)
            m_histograms.emplace(*MeasureModule().pFunction(), m_source.nChannels, m_source.nBits);
    }

    CResult Measure(const CGeometry* region, SRegionStatistics& statistics);

private:
    void Add(const PixelRuns& runs, SPixelSums& sums);
    void Fill(const SPixelSums& sums, SRegionStatistics& statistics);

    const CImage& m_image;
    SPixelSource m_source;
    std::optional<CHistograms> m_histograms;
};

void CMeasurer::Add(const PixelRuns& runs, SPixelSums& sums)
{
    const SPixelRun* pEnd = runs.data() + runs.size();
    for (const SPixelRun* pBegin = runs.data(); pBegin != pEnd && !CProgress::IsThreadCancelled();) {
        const SPixelRun* pBatch = pBegin;
        std::int64_t nPixels = 0;
        while (pBatch != pEnd && nPixels < kBatch) {
            nPixels += pBatch->nEnd - pBatch->nBegin;
            ++pBatch;
        }
        MeasureModule().pFunction()->add(m_source, pBegin, pBatch, sums);
        if (m_histograms)
            m_histograms->Add(m_source, pBegin, pBatch);
        pBegin = pBatch;
    }
}

void CMeasurer::Fill(const SPixelSums& sums, SRegionStatistics& statistics)
{
    const std::uint64_t nCount = statistics.count;
    const auto add = [&](int plane, const SExact& exact) {
        SChannelStatistics channel = StatisticsOf(exact);
        const auto rounded = [&](std::uint32_t value) { return (value + exact.nScale / 2) / exact.nScale; };
        if (m_histograms && nCount > 0)
            m_histograms->Take(plane, rounded(exact.nMin), rounded(exact.nMax), nCount, channel);
        else if (m_histograms)
            channel.histogram.assign(SChannelStatistics::kBins, 0);
        return channel;
    };
    const int nChannels = m_source.nChannels;
    statistics.channels.reserve(static_cast<std::size_t>(nChannels));
    for (int c = 0; c < nChannels; ++c)
        statistics.channels.push_back(add(c, ExactOfChannel(sums, nCount, c)));
    if (nChannels < 3)
        return;
    statistics.grey = add(nChannels, ExactOfGrey(sums, nCount, 0));
    statistics.weightedGrey = add(nChannels + 1, ExactOfGrey(sums, nCount, 1));
}

CResult CMeasurer::Measure(const CGeometry* region, SRegionStatistics& statistics)
{
    PixelRuns runs;
    CResult found =
        FindRegion(m_image.GetWidth(), m_image.GetHeight(), region, ERegionMode::Inside, 0.0, runs);
    if (!found.IsSuccess())
        return found;
    SPixelSums sums;
    statistics.count = CountOf(runs);
    Add(runs, sums);
    if (CProgress::IsThreadCancelled())
        return CResult::Failure(kCancelled);
    if (statistics.count > 0)
        statistics.centroid = CentroidOf(runs, statistics.count);
    Fill(sums, statistics);
    return CResult::Success();
}

/// @return the first failure that concerns all regions
CResult MeasureAll(const CImage& image, const std::vector<const CGeometry*>& regions, EStatistics what,
                   std::vector<SRegionStatistics>& all)
{
    CResult checked = Check(image);
    if (!checked.IsSuccess())
        return checked;
    CMeasurer measurer(image, what);
    for (std::size_t i = 0; i < regions.size(); ++i) {
        if (!CProgress::Tell(static_cast<double>(i) / static_cast<double>(regions.size())))
            return CResult::Failure(kCancelled);
        const CResult result = measurer.Measure(regions[i], all[i]);
        if (!result.IsSuccess())
            all[i] = {};
        all[i].failure = result.GetReason();
    }
    return CResult::Success();
}
} // namespace

std::vector<SRegionStatistics> MeasureRegions(const CImage& image,
                                              const std::vector<const CGeometry*>& regions, EStatistics what)
{
    try {
        std::vector<SRegionStatistics> all(regions.size());
        const CResult result = MeasureAll(image, regions, what, all);
        if (!result.IsSuccess()) {
            for (SRegionStatistics& statistics : all) {
                statistics = {};
                statistics.failure = result.GetReason();
            }
        }
        return all;
    } catch (const std::bad_alloc&) {
        return {};
    }
}

SRegionStatistics MeasureRegion(const CImage& image, const CGeometry* region, EStatistics what)
{
    std::vector<SRegionStatistics> all = MeasureRegions(image, {region}, what);
    if (!all.empty())
        return std::move(all.front());
    SRegionStatistics failed;
    failed.failure = kNoMemory;
    return failed;
}

} // namespace Vantor::Algorithms
