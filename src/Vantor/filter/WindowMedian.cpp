// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/filter/WindowMedian_p.h>

#include <Vantor/filter/ColumnHistograms_p.h>
#include <Vantor/filter/Original_p.h>

#include <cstring>
#include <limits>

namespace Vantor::Algorithms
{

using Geometry::SPixelRun;

namespace
{
/// The filter works in stripes of so many columns that their histograms stay in the cache.
constexpr int kStripe = 512;

struct SRadii {
    int nX;
    int nY;
};

/// Filters one band, stripe by stripe and channel by channel.
template <class Count> class CBandMedian
{
public:
    CBandMedian(const SFilterJob& job, const SBand& band, const SOriginal& original, const SRadii& radii);
    void Run();

private:
    /// Channels without alpha.
    int Colors() const { return m_job.nChannels % 2 == 0 ? m_job.nChannels - 1 : m_job.nChannels; }
    void FilterStripe(const SColumns& stripe, std::size_t channel);
    /// How much is done before a row begins. @return whether to go on
    bool TellRow(int row, const SColumns& stripe, std::size_t channel) const;
    /// Computes the histograms of the rows around a row from those of the row above, or from scratch.
    void MoveToRow(int row, bool first, std::size_t channel);
    void FilterRun(const SPixelRun& run, std::size_t channel);

    SFilterJob m_job;
    SBand m_band;
    const SOriginal* m_pOriginal;
    SRadii m_radii;
    SColumns m_columns;
    int m_nStripe;
    std::unique_ptr<CColumnHistograms<Count>> m_pHistograms;
    CWindowHistogram<Count> m_window;
};

template <class Count>
CBandMedian<Count>::CBandMedian(const SFilterJob& job, const SBand& band, const SOriginal& original,
                                const SRadii& radii)
    : m_job(job), m_band(band), m_pOriginal(&original), m_radii(radii), m_columns(ColumnsOf(band)),
      // A stripe is at least as wide as the columns that its windows read beside it.
      m_nStripe(std::min(std::max(kStripe, std::min(radii.nX, job.nWidth)), job.nWidth)),
      m_pHistograms(std::make_unique<CColumnHistograms<Count>>(static_cast<std::size_t>(
          std::min<std::int64_t>(m_nStripe + std::int64_t(2) * radii.nX, job.nWidth)))),
      m_window(*m_pHistograms, radii.nX, job.nWidth)
{
}

template <class Count> void CBandMedian<Count>::Run()
{
    for (int nBegin = m_columns.nBegin; nBegin < m_columns.nEnd;) {
        const int nEnd = nBegin + std::min(m_nStripe, m_columns.nEnd - nBegin);
        for (int nChannel = 0; nChannel < Colors(); ++nChannel) {
            FilterStripe({nBegin, nEnd}, static_cast<std::size_t>(nChannel));
            if (CProgress::IsThreadCancelled())
                return;
        }
        nBegin = nEnd;
    }
}

template <class Count> void CBandMedian<Count>::FilterStripe(const SColumns& stripe, std::size_t channel)
{
    const SWindow left(stripe.nBegin, m_radii.nX, m_job.nWidth);
    const SWindow right(stripe.nEnd - 1, m_radii.nX, m_job.nWidth);
    m_pHistograms->Restart(static_cast<int>(left.nFirst), static_cast<int>(right.nLast - left.nFirst + 1));
    int nRow = -1;
    for (const SPixelRun* pRun = m_band.pBegin; pRun != m_band.pEnd; ++pRun) {
        const SPixelRun run{pRun->nRow, std::max(pRun->nBegin, stripe.nBegin),
                            std::min(pRun->nEnd, stripe.nEnd)};
        if (run.nBegin >= run.nEnd)
            continue;
        if (run.nRow != nRow) {
            if (!TellRow(run.nRow, stripe, channel))
                return;
            const bool bFirst = nRow < 0;
            for (nRow = bFirst ? run.nRow : nRow + 1; nRow < run.nRow; ++nRow)
                MoveToRow(nRow, false, channel);
            MoveToRow(nRow, bFirst, channel);
            m_window.Restart();
        }
        FilterRun(run, channel);
    }
}

template <class Count>
bool CBandMedian<Count>::TellRow(int row, const SColumns& stripe, std::size_t channel) const
{
    const double dblRows = double(row - m_band.FirstRow()) / (m_band.LastRow() - m_band.FirstRow() + 1);
    const double dblChannels = (double(channel) + dblRows) / Colors();
    const int nColumns = m_columns.nEnd - m_columns.nBegin;
    return CProgress::Tell((stripe.nBegin - m_columns.nBegin + dblChannels * (stripe.nEnd - stripe.nBegin)) /
                           nColumns);
}

template <class Count> void CBandMedian<Count>::MoveToRow(int row, bool first, std::size_t channel)
{
    const std::size_t nPitch = static_cast<std::size_t>(m_job.nChannels);
    const auto add = [&](std::int64_t which, std::int64_t weight) {
        m_pHistograms->AddRow(m_pOriginal->Row(which) + channel, nPitch, static_cast<Count>(weight));
    };
    const SWindow window(row, m_radii.nY, m_job.nHeight);
    if (first) {
        for (std::int64_t i = window.nFirst; i <= window.nLast; ++i)
            add(i, window.WeightOf(i));
        return;
    }
    const std::int64_t nLeaves = SWindow(row - 1, m_radii.nY, m_job.nHeight).nFirst;
    if (nLeaves == window.nLast)
        return;
    add(window.nLast, 1);
    add(nLeaves, -1);
}

template <class Count> void CBandMedian<Count>::FilterRun(const SPixelRun& run, std::size_t channel)
{
    const std::size_t nPitch = static_cast<std::size_t>(m_job.nChannels);
    const Count nRank =
        static_cast<Count>((2 * std::uint64_t(m_radii.nX) + 1) * (2 * std::uint64_t(m_radii.nY) + 1) / 2);
    unsigned char* pTo = m_job.pRows[run.nRow] + static_cast<std::size_t>(run.nBegin) * nPitch + channel;
    for (int x = run.nBegin; x < run.nEnd; ++x, pTo += nPitch)
        *pTo = m_window.FindAt(x, nRank);
}

template <class Count> void FilterBands(const SFilterJob& job, const SOriginal& original, const SRadii& radii)
{
    std::vector<CBandMedian<Count>> vctWorkers;
    for (const SBand& band : MakeBands(job.runs))
        vctWorkers.emplace_back(job, band, original, radii);
    RunWorkers(vctWorkers);
}
} // namespace

bool WindowMedian(const SFilterJob& job, int radiusX, int radiusY)
{
    if (job.runs.empty())
        return true;
    SOriginal original;
    if (!original.CopyFrom(job, radiusY))
        return false;
    const SRadii radii{radiusX, radiusY};
    // The largest window has (2^32 - 1)^2 samples, which 64 bits can count.
    const std::uint64_t nSamples = (2 * std::uint64_t(radiusX) + 1) * (2 * std::uint64_t(radiusY) + 1);
    if (nSamples <= std::numeric_limits<std::uint16_t>::max())
        FilterBands<std::uint16_t>(job, original, radii);
    else if (nSamples <= std::numeric_limits<std::uint32_t>::max())
        FilterBands<std::uint32_t>(job, original, radii);
    else
        FilterBands<std::uint64_t>(job, original, radii);
    return true;
}

} // namespace Vantor::Algorithms
