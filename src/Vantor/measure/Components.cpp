// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/measure/Components.h>

#include <Vantor/CProgress.h>
#include <Vantor/measure/RunMath_p.h>

#include <algorithm>
#include <cstring>
#include <new>

namespace Vantor::Algorithms
{

using Geometry::CGeometry;
using Geometry::SPixelRun;

namespace
{
// What of the work has been done when a part of it is.
constexpr double kLimited = 0.6;
constexpr double kLabelled = 0.8;

/// Short enough to be stored without an allocation.
constexpr const char* kNoMemory = "Out of memory.";

CResult Check(const CImage& image, const SComponentOptions& options)
{
    if (!image.GetRows())
        return CResult::Failure("The image is empty.");
    const std::uint64_t nPixels =
        static_cast<std::uint64_t>(image.GetWidth()) * static_cast<std::uint64_t>(image.GetHeight());
    if (nPixels > UINT32_MAX)
        return CResult::Failure("An image of 2^32 pixels or more cannot be searched.");
    if (options.channel < SComponentOptions::kGrey || options.channel >= image.GetChannel())
        return CResult::Failure("The image does not have that channel.");
    if (options.low > options.high)
        return CResult::Failure("The lowest value is above the highest one.");
    if (options.minArea > options.maxArea)
        return CResult::Failure("The smallest area is above the largest one.");
    if (options.most < 1)
        return CResult::Failure("No component is allowed.");
    return CResult::Success();
}

/// Finds the runs of the pixels of some values within runs of an image.
class CLimits
{
public:
    CLimits(const CImage& image, const SComponentOptions& options)
        : m_pRows(image.GetRows()), m_nBits(image.GetBitDepth()), m_nChannels(image.GetChannel()),
          m_bGrey(options.channel == SComponentOptions::kGrey && m_nChannels > 2),
          m_nChannel(std::max(options.channel, 0)), m_nLow(options.low), m_nSpan(options.high - options.low),
          m_flags(static_cast<std::size_t>(image.GetWidth()) + sizeof(std::uint64_t))
    {
    }

    /// @return whether to go on
    bool Find(const PixelRuns& region, PixelRuns& found);

private:
    template <class Sample> void Flag(const SPixelRun& run);
    template <class Value> void FlagEach(int count, const Value& valueAt);
    void Append(const SPixelRun& run, PixelRuns& found) const;

    const unsigned char* const* m_pRows;
    int m_nBits;
    int m_nChannels;
    bool m_bGrey;
    int m_nChannel;
    std::uint32_t m_nLow;
    std::uint32_t m_nSpan;
    std::vector<unsigned char> m_flags; ///< of each pixel of a run, 0 or 1; room for a word more
};

bool CLimits::Find(const PixelRuns& region, PixelRuns& found)
{
    for (std::size_t i = 0; i < region.size(); ++i) {
        if (!CProgress::Tell(kLimited * static_cast<double>(i) / static_cast<double>(region.size())))
            return false;
        if (m_nBits == 16)
            Flag<std::uint16_t>(region[i]);
        else
            Flag<unsigned char>(region[i]);
        Append(region[i], found);
    }
    return true;
}

template <class Sample> void CLimits::Flag(const SPixelRun& run)
{
    const int nCount = run.nEnd - run.nBegin;
    const auto* pSample = reinterpret_cast<const Sample*>(m_pRows[run.nRow]) +
                          static_cast<std::ptrdiff_t>(run.nBegin) * m_nChannels + m_nChannel;
    const std::ptrdiff_t nStep = m_nChannels;
    if (m_bGrey)
        FlagEach(nCount, [=](std::ptrdiff_t i) -> std::uint32_t {
            const Sample* p = pSample + i * nStep;
            return (299U * p[0] + 587U * p[1] + 114U * p[2] + 500U) / 1000U;
        });
    else if (m_nChannels == 1)
        FlagEach(nCount, [=](std::ptrdiff_t i) -> std::uint32_t { return pSample[i]; });
    else
        FlagEach(nCount, [=](std::ptrdiff_t i) -> std::uint32_t { return pSample[i * nStep]; });
}

template <class Value> void CLimits::FlagEach(int count, const Value& valueAt)
{
    unsigned char* pFlags = m_flags.data();
    const std::uint32_t nLow = m_nLow;
    const std::uint32_t nSpan = m_nSpan;
    for (int i = 0; i < count; ++i)
        pFlags[i] = valueAt(i) - nLow <= nSpan ? 1 : 0; // what is below wraps around
    std::memset(pFlags + count, 0, sizeof(std::uint64_t));
}

/// Looks at eight flags at once.
void CLimits::Append(const SPixelRun& run, PixelRuns& found) const
{
    constexpr std::uint64_t kAll = 0x0101010101010101;
    const int nCount = run.nEnd - run.nBegin;
    std::uint64_t nSame = 0;
    for (int i = 0; i < nCount || nSame != 0;) {
        std::uint64_t nWord = 0;
        std::memcpy(&nWord, m_flags.data() + i, sizeof(nWord));
        const std::uint64_t nOther = nWord ^ nSame;
        if (nOther == 0) {
            i += static_cast<int>(sizeof(nWord));
            continue;
        }
        i += __builtin_ctzll(nOther) / 8;
        nSame ^= kAll;
        if (nSame != 0)
            found.push_back({run.nRow, run.nBegin + i, run.nEnd});
        else
            found.back().nEnd = run.nBegin + i;
    }
}

/// The runs of the components, one component after another.
struct SSorted {
    PixelRuns runs;
    std::vector<std::size_t> begins; ///< of each label, and the end
};

SSorted SortByLabel(const PixelRuns& runs, const SRunLabels& labels)
{
    SSorted sorted;
    sorted.begins.assign(labels.nCount + std::size_t{1}, 0);
    for (const std::uint32_t nLabel : labels.labels)
        ++sorted.begins[nLabel];
    std::size_t nEnd = 0;
    for (std::size_t& nBegin : sorted.begins)
        nBegin = nEnd += nBegin;
    sorted.runs.resize(runs.size());
    for (std::size_t i = runs.size(); i > 0; --i)
        sorted.runs[--sorted.begins[labels.labels[i - 1]]] = runs[i - 1];
    return sorted;
}

CResult Collect(const SSorted& sorted, const SComponentOptions& options, std::vector<SComponent>& found)
{
    PixelRuns runs;
    for (std::size_t i = 0; i + 1 < sorted.begins.size(); ++i) {
        const double part = static_cast<double>(i) / static_cast<double>(sorted.begins.size());
        if (!CProgress::Tell(kLabelled + (1.0 - kLabelled) * part))
            return CResult::Failure(kCancelled);
        const SPixelRun* pRuns = sorted.runs.data();
        runs.assign(pRuns + sorted.begins[i], pRuns + sorted.begins[i + 1]);
        const std::uint64_t nCount = CountOf(runs);
        if (nCount < options.minArea || nCount > options.maxArea)
            continue;
        if (found.size() == static_cast<std::size_t>(options.most))
            return CResult::Failure("There are more than " + std::to_string(options.most) +
                                    " components. A larger smallest area leaves some out.");
        found.push_back({OutlineOf(runs, options.neighbours), nCount, CentroidOf(runs, nCount)});
    }
    return CResult::Success();
}

CResult Find(const CImage& image, const CGeometry* geometry, const SComponentOptions& options,
             std::vector<SComponent>& found)
{
    CResult result = Check(image, options);
    PixelRuns region;
    if (result.IsSuccess())
        result = FindRegion(image.GetWidth(), image.GetHeight(), geometry, ERegionMode::Inside, 0.0, region);
    if (!result.IsSuccess())
        return result;
    JoinTouching(region);
    PixelRuns runs;
    if (!CLimits(image, options).Find(region, runs))
        return CResult::Failure(kCancelled);
    if (options.fillHoles)
        FillHoles(runs, region, options.neighbours);
    const SRunLabels labels = LabelRuns(runs, options.neighbours);
    if (!CProgress::Tell(kLabelled))
        return CResult::Failure(kCancelled);
    return Collect(SortByLabel(runs, labels), options, found);
}
} // namespace

SComponents FindComponents(const CImage& image, const CGeometry* region, const SComponentOptions& options)
{
    SComponents components;
    try {
        const CResult result = Find(image, region, options, components.found);
        if (result.IsSuccess())
            return components;
        components.failure = result.GetReason();
    } catch (const std::bad_alloc&) {
        components.failure = kNoMemory;
    }
    components.found = {};
    return components;
}

} // namespace Vantor::Algorithms
