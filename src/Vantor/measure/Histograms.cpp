// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/measure/Histograms_p.h>

#include <algorithm>

namespace Vantor::Algorithms
{

using Geometry::SPixelRun;

namespace
{
/// Equal values that follow each other are counted in different tables, or each would wait for the one
/// before.
constexpr int kCopies = 4;
/// Pixels that are taken through the planes at once, so that they stay in the nearest cache.
constexpr int kChunk = 1024;

template <class T, int Grey> void Weigh(const T* samples, int count, int step, T* greys)
{
    constexpr SGreyWeights kWeights = kGreys[Grey];
    for (int i = 0; i < count; ++i, samples += step)
        greys[i] = static_cast<T>((kWeights.nRed * samples[0] + kWeights.nGreen * samples[1] +
                                   kWeights.nBlue * samples[2] + kWeights.Sum() / 2) /
                                  kWeights.Sum());
}
} // namespace

CHistograms::CHistograms(int channels, int bits)
    : m_nChannels(channels), m_nBins(std::size_t(1) << bits), m_nCopies(bits == 8 ? kCopies : 1),
      m_vctCounts(static_cast<std::size_t>(channels >= 3 ? channels + 2 : channels) * m_nCopies * m_nBins)
{
}

template <class T> void CHistograms::Count(const T* samples, int count, int step, int plane)
{
    std::uint32_t* arrTables[kCopies];
    for (std::size_t i = 0; i < kCopies; ++i)
        arrTables[i] =
            m_vctCounts.data() + (static_cast<std::size_t>(plane) * m_nCopies + i % m_nCopies) * m_nBins;
    int i = 0;
    for (; i + 4 <= count; i += 4, samples += 4 * step) {
        ++arrTables[0][samples[0]];
        ++arrTables[1][samples[step]];
        ++arrTables[2][samples[2 * step]];
        ++arrTables[3][samples[3 * step]];
    }
    for (; i < count; ++i, samples += step)
        ++arrTables[0][*samples];
}

template <class T> void CHistograms::AddRow(const T* samples, int count)
{
    T arrGreys[kChunk];
    for (int c = 0; c < m_nChannels; ++c)
        Count(samples + c, count, m_nChannels, c);
    if (m_nChannels < 3)
        return;
    Weigh<T, 0>(samples, count, m_nChannels, arrGreys);
    Count(arrGreys, count, 1, m_nChannels);
    Weigh<T, 1>(samples, count, m_nChannels, arrGreys);
    Count(arrGreys, count, 1, m_nChannels + 1);
}

void CHistograms::Add(const SPixelSource& source, const SPixelRun* begin, const SPixelRun* end)
{
    for (const SPixelRun* pRun = begin; pRun != end; ++pRun) {
        for (int x = pRun->nBegin; x < pRun->nEnd; x += std::min(kChunk, pRun->nEnd - x)) {
            const int nCount = std::min(kChunk, pRun->nEnd - x);
            const std::ptrdiff_t nSample = std::ptrdiff_t(x) * m_nChannels;
            const unsigned char* pRow = source.pRows[pRun->nRow];
            if (source.nBits == 8)
                AddRow(pRow + nSample, nCount);
            else
                AddRow(reinterpret_cast<const std::uint16_t*>(pRow) + nSample, nCount);
        }
    }
}

void CHistograms::Take(int plane, std::uint32_t low, std::uint32_t high, std::uint64_t count,
                       SChannelStatistics& statistics)
{
    const std::uint32_t nPerBin = static_cast<std::uint32_t>(m_nBins / SChannelStatistics::kBins);
    std::uint32_t* pTable = m_vctCounts.data() + static_cast<std::size_t>(plane) * m_nCopies * m_nBins;
    statistics.histogram.assign(SChannelStatistics::kBins, 0);
    std::uint64_t nUpTo = 0;
    std::uint32_t nMost = 0;
    bool bMedian = false;
    for (std::uint32_t nValue = low; nValue <= high; ++nValue) {
        std::uint32_t nCount = 0;
        for (std::size_t i = 0; i < m_nCopies; ++i) {
            std::uint32_t& nPart = pTable[i * m_nBins + nValue];
            nCount += nPart;
            nPart = 0;
        }
        statistics.histogram[nValue / nPerBin] += nCount;
        nUpTo += nCount;
        if (nCount > nMost) {
            nMost = nCount;
            statistics.mode = nValue;
        }
        if (!bMedian && 2 * nUpTo > count) {
            bMedian = true;
            statistics.median = nValue;
        }
    }
}

} // namespace Vantor::Algorithms
