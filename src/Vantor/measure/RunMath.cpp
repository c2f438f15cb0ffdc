// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/measure/RunMath_p.h>

#include <Vantor/measure/PixelSums_p.h>

#include <algorithm>
#include <iterator>

namespace Vantor::Algorithms
{

using Geometry::SPixelRun;

namespace
{
/// Numbers in sets; the smallest of a set stands for it.
class CSets
{
public:
    explicit CSets(std::size_t count) : m_parents(count)
    {
        for (std::size_t i = 0; i < count; ++i)
            m_parents[i] = static_cast<std::uint32_t>(i);
    }
    void Join(std::uint32_t a, std::uint32_t b)
    {
        a = Find(a);
        b = Find(b);
        m_parents[std::max(a, b)] = std::min(a, b);
    }
    /// Numbers the sets by their smallest members.
    SRunLabels Labels()
    {
        SRunLabels labels;
        for (std::size_t i = 0; i < m_parents.size(); ++i) // a parent is smaller and has its label by now
            m_parents[i] = m_parents[i] == i ? labels.nCount++ : m_parents[m_parents[i]];
        labels.labels = std::move(m_parents);
        return labels;
    }

private:
    std::uint32_t Find(std::uint32_t i)
    {
        while (m_parents[i] != i)
            i = m_parents[i] = m_parents[m_parents[i]];
        return i;
    }

    std::vector<std::uint32_t> m_parents;
};

bool IsBefore(const SPixelRun& a, const SPixelRun& b)
{
    return a.nRow != b.nRow ? a.nRow < b.nRow : a.nBegin < b.nBegin;
}

/// The columns and rows around a region, one more on each side.
struct SBox {
    int nLeft = INT32_MAX;
    int nRight = INT32_MIN;
    int nTop = INT32_MAX;
    int nBottom = INT32_MIN;

    explicit SBox(const PixelRuns& runs)
    {
        for (const SPixelRun& run : runs) {
            nLeft = std::min(nLeft, run.nBegin - 1);
            nRight = std::max(nRight, run.nEnd + 1);
        }
        nTop = runs.front().nRow - 1;
        nBottom = runs.back().nRow + 1;
    }
};

/// What is between the runs in a box, as runs; a run is outside if any pixel of it is not of the region.
struct SBackground {
    PixelRuns runs;
    std::vector<char> outside;

    SBackground(const PixelRuns& foreground, const PixelRuns& region)
    {
        const SBox box(region);
        auto next = foreground.begin();
        m_region = region.data();
        m_regionEnd = m_region + region.size();
        for (int nRow = box.nTop; nRow <= box.nBottom; ++nRow) {
            int nBegin = box.nLeft;
            for (; next != foreground.end() && next->nRow == nRow; ++next) {
                Add({nRow, nBegin, next->nBegin});
                nBegin = next->nEnd;
            }
            Add({nRow, nBegin, box.nRight});
        }
    }

private:
    void Add(const SPixelRun& run)
    {
        if (run.nBegin >= run.nEnd)
            return;
        const auto isBehind = [&](const SPixelRun& part) {
            return part.nRow < run.nRow || (part.nRow == run.nRow && part.nEnd <= run.nBegin);
        };
        while (m_region != m_regionEnd && isBehind(*m_region))
            ++m_region;
        const bool bInside = m_region != m_regionEnd && m_region->nRow == run.nRow &&
                             m_region->nBegin <= run.nBegin && run.nEnd <= m_region->nEnd;
        runs.push_back(run);
        outside.push_back(!bInside);
    }

    const SPixelRun* m_region;
    const SPixelRun* m_regionEnd;
};
} // namespace

std::uint64_t CountOf(const PixelRuns& runs)
{
    std::uint64_t nCount = 0;
    for (const SPixelRun& run : runs)
        nCount += static_cast<std::uint64_t>(run.nEnd - run.nBegin);
    return nCount;
}

Geometry::SPlace CentroidOf(const PixelRuns& runs, std::uint64_t count)
{
    Wide nTwiceX = 0;
    Wide nSumY = 0;
    for (const SPixelRun& run : runs) {
        const auto nLength = static_cast<std::uint64_t>(run.nEnd - run.nBegin);
        nTwiceX +=
            Wide(nLength) * (static_cast<std::uint64_t>(run.nBegin) + static_cast<std::uint64_t>(run.nEnd));
        nSumY += Wide(nLength) * static_cast<std::uint64_t>(run.nRow);
    }
    const Real pixels = static_cast<Real>(count);
    return {static_cast<double>(RealOf(nTwiceX) / (2.0L * pixels)),
            static_cast<double>(RealOf(nSumY) / pixels + 0.5L)};
}

void JoinTouching(PixelRuns& runs)
{
    auto last = runs.begin();
    for (auto run = runs.begin(); run != runs.end(); ++run) {
        if (run != last && run->nRow == last->nRow && run->nBegin == last->nEnd)
            last->nEnd = run->nEnd;
        else if (run != last)
            *++last = *run;
    }
    if (last != runs.end())
        runs.erase(std::next(last), runs.end());
}

SRunLabels LabelRuns(const PixelRuns& runs, ENeighbours neighbours)
{
    CSets sets(runs.size());
    const int nReach = neighbours == ENeighbours::Eight ? 1 : 0;
    std::size_t nAbove = 0;
    for (std::size_t i = 0; i < runs.size(); ++i) {
        const SPixelRun& run = runs[i];
        const auto isBehind = [&](const SPixelRun& above) {
            return above.nRow < run.nRow - 1 ||
                   (above.nRow == run.nRow - 1 && above.nEnd + nReach <= run.nBegin);
        };
        while (isBehind(runs[nAbove])) // ends at the run itself
            ++nAbove;
        for (std::size_t j = nAbove; runs[j].nRow < run.nRow && runs[j].nBegin < run.nEnd + nReach; ++j)
            sets.Join(static_cast<std::uint32_t>(i), static_cast<std::uint32_t>(j));
    }
    return sets.Labels();
}

void FillHoles(PixelRuns& foreground, const PixelRuns& region, ENeighbours neighbours)
{
    if (foreground.empty())
        return;
    const SBackground background(foreground, region);
    const SRunLabels labels =
        LabelRuns(background.runs, neighbours == ENeighbours::Four ? ENeighbours::Eight : ENeighbours::Four);
    std::vector<char> outside(labels.nCount, 0);
    for (std::size_t i = 0; i < labels.labels.size(); ++i)
        outside[labels.labels[i]] |= background.outside[i];
    PixelRuns holes;
    for (std::size_t i = 0; i < labels.labels.size(); ++i) {
        if (!outside[labels.labels[i]])
            holes.push_back(background.runs[i]);
    }
    PixelRuns all;
    all.reserve(foreground.size() + holes.size());
    std::merge(foreground.begin(), foreground.end(), holes.begin(), holes.end(), std::back_inserter(all),
               IsBefore);
    JoinTouching(all);
    foreground = std::move(all);
}

} // namespace Vantor::Algorithms
