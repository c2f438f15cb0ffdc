// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/filter/Bands_p.h>

#include <algorithm>

#include <sched.h>

namespace Vantor::Algorithms
{

using Geometry::SPixelRun;

namespace
{
constexpr long long kPixelsForTwoThreads = 4'000'000;

int AllowedProcessors()
{
    cpu_set_t set;
    return sched_getaffinity(0, sizeof set, &set) == 0 ? CPU_COUNT(&set) : 1;
}

long long PixelsOf(const PixelRuns& runs)
{
    long long nPixels = 0;
    for (const SPixelRun& run : runs)
        nPixels += run.nEnd - run.nBegin;
    return nPixels;
}
} // namespace

void SColumns::Include(const SColumns& other)
{
    if (other.nBegin >= other.nEnd)
        return;
    const bool bEmpty = nBegin >= nEnd;
    nBegin = bEmpty ? other.nBegin : std::min(nBegin, other.nBegin);
    nEnd = bEmpty ? other.nEnd : std::max(nEnd, other.nEnd);
}

std::vector<SBand> MakeBands(const PixelRuns& runs)
{
    if (runs.empty())
        return {};
    const SPixelRun* pBegin = runs.data();
    const SPixelRun* pEnd = pBegin + runs.size();
    const long long nPixels = PixelsOf(runs);
    if (nPixels < kPixelsForTwoThreads || AllowedProcessors() < 2)
        return {{pBegin, pEnd}};
    const SPixelRun* pMiddle = pBegin;
    for (long long nCounted = 0; nCounted < nPixels / 2; ++pMiddle)
        nCounted += pMiddle->nEnd - pMiddle->nBegin;
    while (pMiddle != pEnd && pMiddle->nRow == pMiddle[-1].nRow)
        ++pMiddle;
    if (pMiddle == pEnd)
        return {{pBegin, pEnd}};
    return {{pBegin, pMiddle}, {pMiddle, pEnd}};
}

SColumns ColumnsOf(const SBand& band)
{
    SColumns columns{0, 0};
    for (const SPixelRun* pRun = band.pBegin; pRun != band.pEnd; ++pRun)
        columns.Include({pRun->nBegin, pRun->nEnd});
    return columns;
}

} // namespace Vantor::Algorithms
