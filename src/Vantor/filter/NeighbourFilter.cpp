// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/filter/NeighbourFilter_p.h>

#include <algorithm>
#include <array>
#include <cstring>

namespace Vantor::Algorithms
{

using Geometry::SPixelRun;

namespace
{
/// Filters one band. It keeps the original pixels of the rows that a kernel's neighbourhood spans. It copies
/// the rows above and below the band at the start, because the other band may overwrite them first.
class CBandFilter
{
public:
    CBandFilter(const SFilterJob& job, const SBand& band, const SRowKernel& kernel);
    void Run();

private:
    struct SKeptRow {
        int nRow = -1;
        std::vector<unsigned char> vctBytes;
    };

    /// The columns of the runs of the row and of its neighbours, which read it.
    SColumns Readers(int row) const;
    /// The buffer that keeps the row, or will keep it.
    SKeptRow& KeptRow(int row);
    void Keep(SKeptRow& kept, int row);
    std::size_t OffsetOf(int column) const;
    /// The row's original bytes from the column on; the row is clamped to the image.
    const unsigned char* Original(int row, int column);

    SFilterJob m_job;
    SBand m_band;
    SRowKernel m_kernel;
    SColumns m_columns;
    std::vector<SColumns> m_vctColumns; ///< of each row of the band
    std::vector<SKeptRow> m_vctKept;    ///< 2 r + 1; the row y is kept at y mod their number
    std::vector<SKeptRow> m_vctBelow;   ///< r, from the first row below the band on
};

CBandFilter::CBandFilter(const SFilterJob& job, const SBand& band, const SRowKernel& kernel)
    : m_job(job), m_band(band), m_kernel(kernel), m_columns(ColumnsOf(band)),
      m_vctColumns(static_cast<std::size_t>(band.LastRow() - band.FirstRow() + 1), SColumns{0, 0}),
      m_vctKept(static_cast<std::size_t>(2 * kernel.nRadius + 1)),
      m_vctBelow(static_cast<std::size_t>(kernel.nRadius))
{
    for (const SPixelRun* pRun = band.pBegin; pRun != band.pEnd; ++pRun)
        m_vctColumns[static_cast<std::size_t>(pRun->nRow - band.FirstRow())].Include(
            {pRun->nBegin, pRun->nEnd});
    const std::size_t nPixels =
        static_cast<std::size_t>(m_columns.nEnd - m_columns.nBegin) + 2 * m_vctBelow.size();
    const std::size_t nBytes = nPixels * static_cast<std::size_t>(job.nChannels) + kKernelSlack;
    for (SKeptRow& kept : m_vctKept)
        kept.vctBytes.resize(nBytes);
    for (SKeptRow& kept : m_vctBelow)
        kept.vctBytes.resize(nBytes);
    for (int nRow = std::max(band.FirstRow() - kernel.nRadius, 0); nRow < band.FirstRow(); ++nRow)
        Keep(KeptRow(nRow), nRow);
    const int nLast = std::min(band.LastRow() + kernel.nRadius, job.nHeight - 1);
    for (int nRow = band.LastRow() + 1; nRow <= nLast; ++nRow)
        Keep(KeptRow(nRow), nRow);
}

CBandFilter::SKeptRow& CBandFilter::KeptRow(int row)
{
    if (row > m_band.LastRow())
        return m_vctBelow[static_cast<std::size_t>(row - m_band.LastRow() - 1)];
    return m_vctKept[static_cast<std::size_t>(row) % m_vctKept.size()];
}

SColumns CBandFilter::Readers(int row) const
{
    SColumns columns{0, 0};
    const int nFirst = std::max(row - m_kernel.nRadius, m_band.FirstRow());
    const int nLast = std::min(row + m_kernel.nRadius, m_band.LastRow());
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
    const int nFrom = columns.nBegin - m_kernel.nRadius;
    const int nTo = columns.nEnd + m_kernel.nRadius;
    const int nBegin = std::max(nFrom, 0);
    const int nEnd = std::min(nTo, m_job.nWidth);
    const unsigned char* pRow = m_job.pRows[row];
    unsigned char* pTo = kept.vctBytes.data() + OffsetOf(nFrom);
    for (int x = nFrom; x < nBegin; ++x, pTo += nPixel)
        std::memcpy(pTo, pRow, nPixel);
    const std::size_t nBytes = static_cast<std::size_t>(nEnd - nBegin) * nPixel;
    std::memcpy(pTo, pRow + static_cast<std::size_t>(nBegin) * nPixel, nBytes);
    pTo += nBytes;
    for (int x = nEnd; x < nTo; ++x, pTo += nPixel)
        std::memcpy(pTo, pTo - nPixel, nPixel);
}

/// The place of a column in a kept row, whose first pixel lies r columns before the band's leftmost one.
std::size_t CBandFilter::OffsetOf(int column) const
{
    return static_cast<std::size_t>(column + m_kernel.nRadius - m_columns.nBegin) *
           static_cast<std::size_t>(m_job.nChannels);
}

const unsigned char* CBandFilter::Original(int row, int column)
{
    const int nRow = std::clamp(row, 0, m_job.nHeight - 1);
    SKeptRow& kept = KeptRow(nRow);
    if (kept.nRow != nRow)
        Keep(kept, nRow);
    return kept.vctBytes.data() + OffsetOf(column);
}

void CBandFilter::Run()
{
    const std::size_t nPixel = static_cast<std::size_t>(m_job.nChannels);
    std::array<const unsigned char*, 2 * kMaxKernelRadius + 1> arrRows;
    for (const SPixelRun* pRun = m_band.pBegin; pRun != m_band.pEnd && TellRun(m_band, pRun); ++pRun) {
        for (int i = -m_kernel.nRadius; i <= m_kernel.nRadius; ++i)
            arrRows[static_cast<std::size_t>(i + m_kernel.nRadius)] = Original(pRun->nRow + i, pRun->nBegin);
        m_kernel.function(arrRows.data(),
                          m_job.pRows[pRun->nRow] + static_cast<std::size_t>(pRun->nBegin) * nPixel,
                          static_cast<std::size_t>(pRun->nEnd - pRun->nBegin) * nPixel, m_job.nChannels);
    }
}
} // namespace

void FilterNeighbours(const SFilterJob& job, const SRowKernel& kernel)
{
    std::vector<CBandFilter> vctFilters;
    for (const SBand& band : MakeBands(job.runs))
        vctFilters.emplace_back(job, band, kernel);
    RunWorkers(vctFilters);
}

} // namespace Vantor::Algorithms
