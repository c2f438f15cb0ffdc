// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/filter/Original_p.h>

#include <algorithm>
#include <cstring>

namespace Vantor::Algorithms
{

bool SOriginal::CopyFrom(const SFilterJob& job, int radius)
{
    nFirstRow = static_cast<int>(std::max<std::int64_t>(std::int64_t(job.runs.front().nRow) - radius, 0));
    nLastRow = static_cast<int>(
        std::min<std::int64_t>(std::int64_t(job.runs.back().nRow) + radius, job.nHeight - 1));
    nStride = static_cast<std::size_t>(job.nWidth) * static_cast<std::size_t>(job.nChannels);
    pData = AllocatePixels(static_cast<std::size_t>(nLastRow - nFirstRow + 1) * nStride);
    if (!pData)
        return false;
    for (int nRow = nFirstRow; nRow <= nLastRow; ++nRow)
        std::memcpy(pData.get() + static_cast<std::size_t>(nRow - nFirstRow) * nStride, job.pRows[nRow],
                    nStride);
    return true;
}

void SOriginal::Restore(const SFilterJob& job) const
{
    const std::size_t nPixel = static_cast<std::size_t>(job.nChannels);
    for (const Geometry::SPixelRun& run : job.runs) {
        const std::size_t nFrom = static_cast<std::size_t>(run.nBegin) * nPixel;
        std::memcpy(job.pRows[run.nRow] + nFrom, Row(run.nRow) + nFrom,
                    static_cast<std::size_t>(run.nEnd - run.nBegin) * nPixel);
    }
}

} // namespace Vantor::Algorithms
