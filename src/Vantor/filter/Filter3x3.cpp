// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/filter/Filter3x3_p.h>

#include <algorithm>
#include <array>
#include <cstring>

namespace Vantor::Algorithms
{

using Geometry::SPixelRun;

namespace
{
/// Filters one band. It keeps the original pixels of the last three rows; the row below the band is taken
/// aside at the start, for the next band may be ahead of this one. So is the row above.
class CBandFilter
{
public:
    CBandFilter(const SFilterJob& job, const SBand& band, RowKernel kernel);
    void Run();

private:
    struct SKeptRow {
        int nRow = -1;
        std::vector<unsigned char> vctBytes;
    };

    /// The columns of the runs of the row and of its two neighbours, which read it.
    SColumns Readers(int row) const;
    void Keep(SKeptRow& kept, int row);
    /// The original bytes of the row, which is clamped to the image, from the column on.
    const unsigned char* Original(int row, int column);

    SFilterJob m_job;
    SBand m_band;
    RowKernel m_kernel;
    SColumns m_columns;
    std::vector<SColumns> m_vctColumns; ///< of each row of the band
    std::array<SKeptRow, 3> m_arrKept;  ///< the row y is kept at y mod 3
    SKeptRow m_below;
};

CBandFilter::CBandFilter(const SFilterJob& job, const SBand& band, RowKernel kernel)
    : m_job(job), m_band(band), m_kernel(kernel), m_columns(ColumnsOf(band)),
      m_vctColumns(static_cast<std::size_t>(band.LastRow() - band.FirstRow() + 1), SColumns{0, 0})
{
    for (const SPixelRun* pRun = band.pBegin; pRun != band.pEnd; ++pRun)
        m_vctColumns[static_cast<std::size_t>(pRun->nRow - band.FirstRow())].Include(
            {pRun->nBegin, pRun->nEnd});
    const std::size_t nPixels = static_cast<std::size_t>(m_columns.nEnd - m_columns.nBegin) + 2;
    const std::size_t nBytes = nPixels * static_cast<std::size_t>(job.nChannels) + kKernelSlack;
    for (SKeptRow& kept : m_arrKept)
        kept.vctBytes.resize(nBytes);
    m_below.vctBytes.resize(nBytes);
    if (band.FirstRow() > 0)
        Keep(m_arrKept[static_cast<std::size_t>(band.FirstRow() - 1) % m_arrKept.size()],
             band.FirstRow() - 1);
    if (band.LastRow() + 1 < job.nHeight)
        Keep(m_below, band.LastRow() + 1);
}

SColumns CBandFilter::Readers(int row) const
{
    SColumns columns{0, 0};
    const int nFirst = std::max(row - 1, m_band.FirstRow());
    const int nLast = std::min(row + 1, m_band.LastRow());
    for (int nRow = nFirst; nRow <= nLast; ++nRow)
        columns.Include(m_vctColumns[static_cast<std::size_t>(nRow - m_band.FirstRow())]);
    return columns;
}

void CBandFilter::Keep(SKeptRow& kept, int row)
{
    kept.nRow = row;
    const SColumns columns = Readers(row);
    if (columns.nBegin >= columns.nEnd)
        return;
    const std::size_t nPixel = static_cast<std::size_t>(m_job.nChannels);
    const int nBegin = std::max(columns.nBegin - 1, 0);
    const int nEnd = std::min(columns.nEnd + 1, m_job.nWidth);
    const unsigned char* pFrom = m_job.pRows[row];
    // The first kept pixel is the left neighbour of the band's leftmost column.
    unsigned char* pTo =
        kept.vctBytes.data() + static_cast<std::size_t>(nBegin + 1 - m_columns.nBegin) * nPixel;
    const std::size_t nBytes = static_cast<std::size_t>(nEnd - nBegin) * nPixel;
    std::memcpy(pTo, pFrom + static_cast<std::size_t>(nBegin) * nPixel, nBytes);
    if (columns.nBegin == 0)
        std::memcpy(pTo - nPixel, pTo, nPixel);
    if (columns.nEnd == m_job.nWidth)
        std::memcpy(pTo + nBytes, pTo + nBytes - nPixel, nPixel);
}

const unsigned char* CBandFilter::Original(int row, int column)
{
    const int nRow = std::clamp(row, 0, m_job.nHeight - 1);
    SKeptRow& kept =
        nRow > m_band.LastRow() ? m_below : m_arrKept[static_cast<std::size_t>(nRow) % m_arrKept.size()];
    if (kept.nRow != nRow)
        Keep(kept, nRow);
    return kept.vctBytes.data() + static_cast<std::size_t>(column + 1 - m_columns.nBegin) *
                                      static_cast<std::size_t>(m_job.nChannels);
}

void CBandFilter::Run()
{
    const std::size_t nPixel = static_cast<std::size_t>(m_job.nChannels);
    for (const SPixelRun* pRun = m_band.pBegin; pRun != m_band.pEnd; ++pRun) {
        const SThreeRows rows{Original(pRun->nRow - 1, pRun->nBegin), Original(pRun->nRow, pRun->nBegin),
                              Original(pRun->nRow + 1, pRun->nBegin)};
        m_kernel(rows, m_job.pRows[pRun->nRow] + static_cast<std::size_t>(pRun->nBegin) * nPixel,
                 static_cast<std::size_t>(pRun->nEnd - pRun->nBegin) * nPixel, m_job.nChannels);
    }
}
} // namespace

void Filter3x3(const SFilterJob& job, RowKernel kernel)
{
    std::vector<CBandFilter> vctFilters;
    for (const SBand& band : MakeBands(job.runs))
        vctFilters.emplace_back(job, band, kernel);
    RunWorkers(vctFilters);
}

} // namespace Vantor::Algorithms
